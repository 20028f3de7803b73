#include "ui/frmMain.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <utility>

#include "platform/Text.h"
#include "platform/gui/DesignFont.h"
#include "platform/gui/Latin1.h"
#include "platform/gui/ScreenPlacement.h"
#include "platform/gui/Twips.h"
#include "ui/frmPause.h"

namespace vantorin {

namespace {

constexpr const char* kTitle = "Vantorin Website Downloader 1.9";

// A picture box: a sunken panel painted in the list background.
QFrame* MakePicture(QWidget* parent, const char* name, QFrame::Shape shape) {
    auto* picture = new QFrame(parent);
    picture->setObjectName(QString::fromLatin1(name));
    picture->setFrameShape(shape);
    picture->setFrameShadow(QFrame::Sunken);
    return picture;
}

}  // namespace

frmMain::frmMain(CrawlEngine& engine, CrawlVariables& vars, Dialogs& dialogs, ShellOpen& shell,
                 QWidget* parent)
    : QMainWindow(parent),
      engine_(engine),
      state_(engine.State()),
      vars_(vars),
      dialogs_(dialogs),
      shell_(shell),
      list1Model_(state_.List1),
      list2Model_(state_.List2) {
    setObjectName(QStringLiteral("frmMain"));
    // The program ends when the exit question says so, not when the window
    // hides to reload after a stop.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    setWindowTitle(QString::fromLatin1(kTitle));
    BuildControls();
    BuildMenu();
    resize(TwipsToPixels(kFormWidth, logicalDpiX()), TwipsToPixels(kFormHeight, logicalDpiY()));
    // Placed by the program, not left to the window manager: the wizard opens
    // centred over the window as soon as it is shown, before a window manager
    // would have placed it, and a reload shows it where it was.
    move(CentredOver(screen()->availableGeometry(), size()));
    state_.onChange = [this](StateChange change, int slot) { Render(change, slot); };
    engine_.onOutcome = [this](CrawlOutcome outcome) {
        if (outcome == CrawlOutcome::Stopped) ReloadWindow();
    };
    // exit(), not quit(): quit() would ask every window to close first, and so
    // ask this window's exit question a second time.
    engine_.onEndProgram = [] { QCoreApplication::exit(0); };
    Form_Load();
}

frmMain::~frmMain() {
    state_.onChange = nullptr;
    engine_.onOutcome = nullptr;
    engine_.onEndProgram = nullptr;
}

QLabel* frmMain::MakeLabel(QWidget* parent, const char* name, const char* caption) {
    auto* label = new QLabel(QString::fromLatin1(caption), parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setFont(DesignFont());
    return label;
}

void frmMain::BuildControls() {
    auto* form = new QWidget(this);
    form->setObjectName(QStringLiteral("form"));
    setCentralWidget(form);

    const std::array<QStyle::StandardPixmap, 4> icons = {QStyle::SP_MediaPlay, QStyle::SP_MediaStop,
                                                         QStyle::SP_FileDialogDetailedView,
                                                         QStyle::SP_DirOpenIcon};
    const std::array<const char*, 4> tips = {"Start downloading", "Stop downloading",
                                             "Keyword filters", "Explore the download folder"};
    pictures_[1] = MakePicture(form, "Picture2", QFrame::NoFrame);
    for (std::size_t i = 0; i < commands_.size(); ++i) {
        auto* button = new QPushButton(i == 0 ? form : pictures_[1]);
        button->setObjectName(QStringLiteral("Command%1").arg(i + 1));
        button->setIcon(style()->standardIcon(icons[i]));
        button->setToolTip(QString::fromLatin1(tips[i]));
        commands_[i] = button;
    }

    text1_ = new QLineEdit(form);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->installEventFilter(this);

    pictures_[0] = MakePicture(form, "Picture1", QFrame::Panel);
    pictures_[0]->setAutoFillBackground(true);
    pictures_[0]->setBackgroundRole(QPalette::Base);
    pictures_[2] = MakePicture(pictures_[0], "Picture3", QFrame::Panel);
    pictures_[2]->setAutoFillBackground(true);
    pictures_[2]->setBackgroundRole(QPalette::Base);
    connectionsHeading_ = MakeLabel(pictures_[0], "ConnectionsHeading", "Connections");
    dataInHeading_ = MakeLabel(pictures_[2], "DataInHeading", "Data In");
    connectionsHeading_->setFont(DesignFont(8.25, true));
    dataInHeading_->setFont(DesignFont(8.25, true));

    // The designed row 0: every created row copies its look; it is never shown.
    rows_.x[0] = MakeLabel(pictures_[0], "x0", "0");
    rows_.l[0] = MakeLabel(pictures_[0], "l0", "Not Connected.");
    rows_.k[0] = MakeLabel(pictures_[2], "k0", "0 KB");
    rows_.k2[0] = MakeLabel(pictures_[2], "k20", "-");
    rows_.x[0]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (QLabel* designed : {rows_.x[0], rows_.l[0], rows_.k[0], rows_.k2[0]}) designed->hide();

    labels_[1] = MakeLabel(form, "Label1", "Queued");
    labels_[2] = MakeLabel(form, "Label2", "Downloaded");
    labels_[3] = MakeLabel(form, "Label3", "0 Files");
    labels_[4] = MakeLabel(form, "Label4", "0 Bytes");
    labels_[5] = MakeLabel(form, "Label5", "0 Files");
    labels_[6] = MakeLabel(form, "Label6", "Not Connected.");
    labels_[7] = MakeLabel(form, "Label7", "");
    labels_[8] = MakeLabel(form, "Label8", "Queued Files");
    labels_[9] = MakeLabel(form, "Label9", "How many connections?");
    labels_[9]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    labels_[8]->setFont(DesignFont(8.25, true));

    txtMax_ = new QComboBox(form);
    txtMax_->setObjectName(QStringLiteral("txtMax"));
    txtMax_->setEditable(true);
    txtMax_->setInsertPolicy(QComboBox::NoInsert);

    list1_ = new QListView(form);
    list1_->setObjectName(QStringLiteral("List1"));
    list1_->setModel(&list1Model_);
    list1_->setUniformItemSizes(true);
    list1_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list1_->setSelectionMode(QAbstractItemView::SingleSelection);
    list2_ = new QListView(form);
    list2_->setObjectName(QStringLiteral("List2"));
    list2_->setModel(&list2Model_);
    list2_->setUniformItemSizes(true);
    list2_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list2_->hide();  // the engine's working list; the window does not lay it out

    connect(commands_[0], &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(commands_[1], &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(commands_[2], &QPushButton::clicked, this, [this] { Command3_Click(); });
    connect(commands_[3], &QPushButton::clicked, this, [this] { Command4_Click(); });
    // What is typed or chosen goes into the state first, then to the engine.
    connect(text1_, &QLineEdit::textEdited, this,
            [this](const QString& text) { state_.SetText1(FromQt(text)); });
    connect(text1_, &QLineEdit::returnPressed, this, [this] { engine_.Text1_KeyDown(13); });
    connect(txtMax_->lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) {
        state_.SetTxtMax(FromQt(text));
        engine_.txtMax_Change();
    });
    connect(txtMax_, &QComboBox::activated, this, [this](int index) {
        state_.SetTxtMax(FromQt(txtMax_->itemText(index)));
        engine_.txtMax_Click();
    });
    connect(list1_, &QListView::doubleClicked, this, [this] { List1_DblClick(); });
}

void frmMain::BuildMenu() {
    const auto addMenu = [this](const char* name, const char* caption) {
        QMenu* menu = menuBar()->addMenu(QString::fromLatin1(caption));
        menu->setObjectName(QString::fromLatin1(name));
        menu->menuAction()->setObjectName(QString::fromLatin1(name));
        return menu;
    };
    // A shortcut only reaches the item's own handler, beside its mnemonic.
    const auto addItem = [this](QMenu* menu, const char* name, const char* caption,
                                void (frmMain::*handler)(), QKeySequence shortcut = {}) {
        QAction* item = menu->addAction(QString::fromLatin1(caption));
        item->setObjectName(QString::fromLatin1(name));
        item->setShortcut(shortcut);
        connect(item, &QAction::triggered, this, [this, handler] { (this->*handler)(); });
        return item;
    };

    QMenu* mnufile = addMenu("mnufile", "&File");
    addItem(mnufile, "mnunew", "&New Site", &frmMain::mnunew_Click, Qt::CTRL | Qt::Key_N);
    mnufile->addSeparator();
    addItem(mnufile, "mnuexit", "&Exit Vantorin", &frmMain::mnuexit_Click, Qt::CTRL | Qt::Key_Q);

    QMenu* mnusites = addMenu("mnusites", "&Sites");
    mnupause_ = addItem(mnusites, "mnupause", "Pause Download", &frmMain::mnupause_Click);
    mnusites->addSeparator();
    addItem(mnusites, "mnuexplore", "&Explore...", &frmMain::mnuexplore_Click);
    mnusites->addSeparator();
    addItem(mnusites, "mnupref", "&Preferences...", &frmMain::mnupref_Click);

    QMenu* mnuhelp = addMenu("mnuhelp", "&Help");
    addItem(mnuhelp, "mnuabout", "&About", &frmMain::mnuabout_Click, Qt::Key_F1);
}

// The controls the state does not hold, as a fresh load finds them.
void frmMain::ResetControls() {
    layout_ = DesignLayout();
    Place(rows_.x[0], layout_.RowNumber);
    Place(rows_.l[0], layout_.RowStatus);
    Place(rows_.k[0], layout_.RowSize);
    Place(rows_.k2[0], layout_.RowReceived);
    labels_[7]->clear();
    list1_->setVisible(true);
    txtMax_->clear();
    for (int i = 1; i <= kSlotCount; ++i) {
        for (auto* row : {&rows_.l, &rows_.x, &rows_.k, &rows_.k2}) {
            delete (*row)[static_cast<std::size_t>(i)];
            (*row)[static_cast<std::size_t>(i)] = nullptr;
        }
    }
}

void frmMain::Form_Load() {
    ResetControls();
    MakeRows();
    engine_.ResetForReload();
    RenderAll();
    ShowWizardOnActivate = true;
    Form_Resize();
}

// Rows 1 to 24, each below the one before it; the size label k stays hidden
// as created, so only the status, the number and the received bytes show.
void frmMain::MakeRows() {
    for (int i = 1; i <= kSlotCount; ++i) {
        const auto n = static_cast<std::size_t>(i);
        const QByteArray number = QByteArray::number(i);
        QLabel* previous = rows_.l[n - 1];
        const int top = previous->y() + previous->height();
        const auto copy = [&](QLabel* designed, const char* prefix) {
            const QByteArray name = QByteArray(prefix) + number;
            QLabel* label = MakeLabel(designed->parentWidget(), name.constData(), "");
            label->setText(designed->text());
            label->setAlignment(designed->alignment());
            label->setGeometry(designed->x(), top, designed->width(), designed->height());
            return label;
        };
        rows_.l[n] = copy(rows_.l[0], "l");
        rows_.x[n] = copy(rows_.x[0], "x");
        rows_.k[n] = copy(rows_.k[0], "k");
        rows_.k2[n] = copy(rows_.k2[0], "k2");
        rows_.x[n]->setText(QString::fromLatin1(number));
        rows_.l[n]->show();
        rows_.x[n]->show();
        rows_.k2[n]->show();
        rows_.k[n]->hide();
        txtMax_->addItem(QString::fromLatin1(number));
    }
    pictures_[2]->raise();  // a long status text ends under the "Data In" column
}

void frmMain::Place(QWidget* widget, const TwipRect& r) const {
    PlaceTwips(*widget, r.Left, r.Top, r.Width, r.Height);
}

void frmMain::ApplyLayout() {
    const MainLayout& d = layout_;
    Place(commands_[0], d.Command1);
    Place(text1_, d.Text1);
    Place(pictures_[1], d.Picture2);
    Place(commands_[1], d.Command2);
    Place(commands_[2], d.Command3);
    Place(commands_[3], d.Command4);
    Place(pictures_[0], d.Picture1);
    Place(pictures_[2], d.Picture3);
    Place(connectionsHeading_, d.ConnectionsHeading);
    Place(dataInHeading_, d.DataInHeading);
    Place(labels_[2], d.Label2);
    Place(labels_[3], d.Label3);
    Place(labels_[4], d.Label4);
    Place(labels_[1], d.Label1);
    Place(labels_[5], d.Label5);
    Place(labels_[9], d.Label9);
    Place(txtMax_, d.txtMax);
    Place(labels_[7], d.Label7);
    Place(labels_[8], d.Label8);
    Place(list1_, d.List1);
    Place(labels_[6], d.Label6);
}

void frmMain::Form_Resize() {
    ResizeLayout(layout_, PixelsToTwips(width(), logicalDpiX()),
                 PixelsToTwips(height(), logicalDpiY()));
    ApplyLayout();
}

void frmMain::resizeEvent(QResizeEvent* e) {
    QMainWindow::resizeEvent(e);
    Form_Resize();
}

bool frmMain::event(QEvent* e) {
    // Shown counts as activated too: without a window manager no activation comes.
    const bool activated = e->type() == QEvent::WindowActivate || e->type() == QEvent::Show;
    if (activated && ShowWizardOnActivate) {
        // Opened once the activation has been handled, so the window is drawn first.
        QTimer::singleShot(0, this, [this] { Form_Activate(); });
    }
    return QMainWindow::event(e);
}

void frmMain::Form_Activate() {
    if (!ShowWizardOnActivate || wizardOpen_) return;
    ShowWizard();
    ShowWizardOnActivate = false;
    engine_.ClearStopping();
}

void frmMain::ShowWizard() {
    if (!ShowNewSiteWizard) return;
    wizardOpen_ = true;
    ShowNewSiteWizard();
    wizardOpen_ = false;
}

void frmMain::closeEvent(QCloseEvent* e) {
    if (!unloadConfirmed_) {
        insideCloseEvent_ = true;
        engine_.AskExit([this](bool unload) {
            unloadConfirmed_ = unload;
            // An answer that comes after this event was refused closes again.
            if (unload && !insideCloseEvent_) close();
        });
        insideCloseEvent_ = false;
    }
    e->setAccepted(std::exchange(unloadConfirmed_, false));
}

bool frmMain::eventFilter(QObject* watched, QEvent* e) {
    if (watched == text1_ && e->type() == QEvent::FocusIn) {
        // After the click that gave the focus has placed the caret.
        QTimer::singleShot(0, this, [this] { Text1_GotFocus(); });
    }
    return QMainWindow::eventFilter(watched, e);
}

// --- handlers ---

void frmMain::Command1_Click() {
    engine_.ConnectNowNow();
}

void frmMain::Command2_Click() {
    engine_.AskStop();
}

void frmMain::Command3_Click() {
    if (ShowFilterDialog) ShowFilterDialog();
}

void frmMain::Command4_Click() {
    mnuexplore_Click();
}

// The wizard follows the stop question's answer, whenever it comes, and only
// when no crawl runs by then (a stop, or a crawl that completed meanwhile).
void frmMain::mnunew_Click() {
    const auto showWhenIdle = [this] {
        if (!engine_.Running()) ShowWizard();
    };
    if (engine_.Running()) {
        engine_.AskStop(showWhenIdle);
    } else {
        showWhenIdle();
    }
}

void frmMain::mnupref_Click() {
    mnunew_Click();
}

void frmMain::mnuexit_Click() {
    close();
}

// The pause dialog is modal to the whole program but nobody waits in it: a
// click handled inside a save's or a scan's yield must not freeze that job
// (its row empty, its socket held) for as long as the pause lasts.
void frmMain::mnupause_Click() {
    engine_.PauseBegin();
    auto* pause = new frmPause(this);
    pause->setAttribute(Qt::WA_DeleteOnClose);
    pause->OnUnload = [this] { engine_.PauseEnd(); };
    pause->show();
}

void frmMain::mnuexplore_Click() {
    shell_.OpenFolder(vars_.TargetFolder);
}

void frmMain::mnuabout_Click() {
    dialogs_.Ask(kTitle, "About", kInformation, {});
}

// Opens the selected queue entry in the browser; an entry without the scheme
// gets "http://" in front of its trimmed text, one with it is used as it stands.
void frmMain::List1_DblClick() {
    const QModelIndex current = list1_->currentIndex();
    const std::string entry = current.isValid() && list1_->selectionModel()->isSelected(current)
                                  ? state_.List1.Item(current.row())
                                  : std::string();
    const std::string address =
        LCase(Left(entry, 7)) == "http://" ? entry : "http://" + Trim(entry);
    shell_.OpenAddress(address);
}

void frmMain::Text1_GotFocus() {
    text1_->setSelection(0, static_cast<int>(text1_->text().size()));
}

// Unloads the window (its unload asks nothing while the engine is stopping)
// and shows it again reloaded from scratch; its first activation opens the
// wizard again.
void frmMain::ReloadWindow() {
    engine_.AskExit([this](bool unload) {
        if (!unload) return;
        hide();
        Form_Load();
        show();
    });
}

// --- the state on the controls ---

void frmMain::Render(StateChange change, int slot) {
    switch (change) {
        case StateChange::Text1:
            // Only when it differs, so the caret stays where typing left it.
            if (FromQt(text1_->text()) != state_.Text1()) text1_->setText(ToQt(state_.Text1()));
            break;
        case StateChange::Text1Enabled:
            text1_->setEnabled(state_.Text1Enabled());
            break;
        case StateChange::Text1Focus:
            text1_->setFocus();
            break;
        case StateChange::txtMax:
            if (FromQt(txtMax_->currentText()) != state_.txtMax())
                txtMax_->setEditText(ToQt(state_.txtMax()));
            break;
        case StateChange::Command1:
            commands_[0]->setEnabled(state_.Command1Enabled());
            break;
        case StateChange::Command2:
            commands_[1]->setEnabled(state_.Command2Enabled());
            break;
        case StateChange::mnupause:
            mnupause_->setEnabled(state_.mnupauseEnabled());
            break;
        case StateChange::Captions:
            labels_[3]->setText(ToQt(state_.Label3()));
            labels_[4]->setText(ToQt(state_.Label4()));
            labels_[5]->setText(ToQt(state_.Label5()));
            labels_[6]->setText(ToQt(state_.Label6()));
            break;
        case StateChange::Row:
            if (slot >= 1 && slot <= kSlotCount && rows_.l[static_cast<std::size_t>(slot)]) {
                const RowTexts& row = state_.Row(slot);
                rows_.l[static_cast<std::size_t>(slot)]->setText(ToQt(row.Status));
                rows_.k[static_cast<std::size_t>(slot)]->setText(ToQt(row.Size));
                rows_.k2[static_cast<std::size_t>(slot)]->setText(ToQt(row.Received));
            }
            break;
    }
}

void frmMain::RenderAll() {
    for (StateChange change :
         {StateChange::Text1, StateChange::Text1Enabled, StateChange::txtMax, StateChange::Command1,
          StateChange::Command2, StateChange::mnupause, StateChange::Captions})
        Render(change, 0);
    for (int slot = 1; slot <= kSlotCount; ++slot) Render(StateChange::Row, slot);
}

}  // namespace vantorin

#include "ui/frmMain.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStyle>
#include <QTimer>
#include <climits>

#include "engine/CrawlEngine.h"
#include "extractor/KeywordFilters.h"
#include "output/LocalPath.h"
#include "platform/Text.h"
#include "platform/gui/Latin1.h"
#include "ui/frmPause.h"

namespace vantorin {

namespace {

constexpr const char* kTitle = "Vantorin Website Downloader 1.9";

QFont LabelFont() {
    QFont verdana(QStringLiteral("Verdana"));
    verdana.setPointSizeF(8.25);
    return verdana;
}

// A picture box: a sunken panel painted in the list background.
QFrame* MakePicture(QWidget* parent, const char* name, QFrame::Shape shape) {
    auto* picture = new QFrame(parent);
    picture->setObjectName(QString::fromLatin1(name));
    picture->setFrameShape(shape);
    picture->setFrameShadow(QFrame::Sunken);
    return picture;
}

}  // namespace

frmMain::frmMain(CrawlVariables& vars, FileSystem& fs, Dialogs& dialogs, ShellOpen& shell,
                 QWidget* parent)
    : QMainWindow(parent), vars_(vars), fs_(fs), dialogs_(dialogs), shell_(shell) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QString::fromLatin1(kTitle));
    BuildControls();
    BuildMenu();
    resize(TwipsToPixels(kFormWidth, logicalDpiX()), TwipsToPixels(kFormHeight, logicalDpiY()));
    Form_Load();
}

frmMain::~frmMain() = default;

void frmMain::AttachEngine(CrawlEngine& engine) {
    engine_ = &engine;
}

QLabel* frmMain::MakeLabel(QWidget* parent, const char* name, const char* caption) {
    auto* label = new QLabel(QString::fromLatin1(caption), parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setFont(LabelFont());
    return label;
}

void frmMain::BuildControls() {
    auto* form = new QWidget(this);
    form->setObjectName(QStringLiteral("form"));
    setCentralWidget(form);
    const QFont verdana = LabelFont();

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
    QFont bold = verdana;
    bold.setBold(true);
    connectionsHeading_->setFont(bold);
    dataInHeading_->setFont(bold);

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
    QFont headingFont = verdana;
    headingFont.setBold(true);
    labels_[8]->setFont(headingFont);

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
    connect(text1_, &QLineEdit::returnPressed, this, [this] {
        if (engine_) engine_->Text1_KeyDown(13);
    });
    connect(txtMax_->lineEdit(), &QLineEdit::textEdited, this, [this] {
        if (engine_) engine_->txtMax_Change();
    });
    connect(txtMax_, &QComboBox::activated, this, [this] {
        if (engine_) engine_->txtMax_Click();
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
    const auto addItem = [this](QMenu* menu, const char* name, const char* caption,
                                void (frmMain::*handler)()) {
        QAction* item = menu->addAction(QString::fromLatin1(caption));
        item->setObjectName(QString::fromLatin1(name));
        connect(item, &QAction::triggered, this, [this, handler] { (this->*handler)(); });
        return item;
    };

    QMenu* mnufile = addMenu("mnufile", "&File");
    addItem(mnufile, "mnunew", "&New Site", &frmMain::mnunew_Click);
    mnufile->addSeparator();
    addItem(mnufile, "mnuexit", "&Exit Vantorin", &frmMain::mnuexit_Click);

    QMenu* mnusites = addMenu("mnusites", "&Sites");
    mnupause_ = addItem(mnusites, "mnupause", "Pause Download", &frmMain::mnupause_Click);
    mnusites->addSeparator();
    addItem(mnusites, "mnuexplore", "&Explore...", &frmMain::mnuexplore_Click);
    mnusites->addSeparator();
    addItem(mnusites, "mnupref", "&Preferences...", &frmMain::mnupref_Click);

    QMenu* mnuhelp = addMenu("mnuhelp", "&Help");
    addItem(mnuhelp, "mnuabout", "&About", &frmMain::mnuabout_Click);
}

// The designed state of every control, as a fresh load finds it.
void frmMain::ResetControls() {
    layout_ = DesignLayout();
    Place(rows_.x[0], layout_.RowNumber);
    Place(rows_.l[0], layout_.RowStatus);
    Place(rows_.k[0], layout_.RowSize);
    Place(rows_.k2[0], layout_.RowReceived);
    text1_->clear();
    text1_->setEnabled(true);
    commands_[0]->setEnabled(true);
    commands_[1]->setEnabled(false);
    mnupause_->setEnabled(false);
    labels_[3]->setText(QStringLiteral("0 Files"));
    labels_[4]->setText(QStringLiteral("0 Bytes"));
    labels_[5]->setText(QStringLiteral("0 Files"));
    labels_[6]->setText(QStringLiteral("Not Connected."));
    labels_[7]->clear();
    list1Model_.Clear();
    list2Model_.Clear();
    list1_->setVisible(true);
    txtMax_->clear();
    for (int i = 1; i <= kRowCount; ++i) {
        for (auto* row : {&rows_.l, &rows_.x, &rows_.k, &rows_.k2}) {
            delete (*row)[static_cast<std::size_t>(i)];
            (*row)[static_cast<std::size_t>(i)] = nullptr;
        }
    }
}

void frmMain::Form_Load() {
    ResetControls();
    LoadKeywordFilters(vars_.KeywordFilters, fs_);
    MakeRows();
    SetTxtMax("4");
    MakeFolder(fs_.ProgramFolder() + "\\dldata", vars_, fs_);
    ShowWizardOnActivate = true;
    Form_Resize();
}

// Rows 1 to 24, each below the one before it; the size label k stays hidden
// as created, so only the status, the number and the received bytes show.
void frmMain::MakeRows() {
    for (int i = 1; i <= kRowCount; ++i) {
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
        rows_.l[n]->setText(QStringLiteral("Not Connected."));
        rows_.l[n]->show();
        rows_.x[n]->show();
        rows_.k2[n]->show();
        rows_.k[n]->hide();
        if (engine_) {
            // The reloaded window's timeout timers start as designed.
            engine_->tmrOut(i).SetEnabled(false);
            engine_->tmrOut(i).SetInterval(kDefaultTimeoutMs);
        }
        txtMax_->addItem(QString::fromLatin1(number));
    }
    pictures_[2]->raise();  // a long status text ends under the "Data In" column
    if (engine_) {
        engine_->TotalBytes = 0;
        engine_->FilesDone = 0;
    }
}

void frmMain::Place(QWidget* widget, const TwipRect& r) const {
    const int dx = logicalDpiX();
    const int dy = logicalDpiY();
    widget->setGeometry(TwipsToPixels(r.Left, dx), TwipsToPixels(r.Top, dy),
                        TwipsToPixels(r.Width, dx), TwipsToPixels(r.Height, dy));
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
    if (engine_) engine_->Stopping = false;
}

void frmMain::ShowWizard() {
    if (!ShowNewSiteWizard) return;
    wizardOpen_ = true;
    ShowNewSiteWizard();
    wizardOpen_ = false;
}

void frmMain::closeEvent(QCloseEvent* e) {
    if (engine_ && !engine_->ExitRequested()) {
        e->ignore();
        return;
    }
    e->accept();
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
    if (engine_) engine_->ConnectNowNow();
}

void frmMain::Command2_Click() {
    if (engine_) engine_->AskStop();
}

void frmMain::Command3_Click() {
    ShowKeywordFilterDialog();
}

void frmMain::Command4_Click() {
    mnuexplore_Click();
}

void frmMain::mnunew_Click() {
    if (!Command1Enabled() && engine_) engine_->AskStop();
    if (Command1Enabled()) ShowWizard();
}

void frmMain::mnupref_Click() {
    mnunew_Click();
}

void frmMain::mnuexit_Click() {
    close();
}

void frmMain::mnupause_Click() {
    if (engine_) engine_->PauseBegin();
    frmPause pause(this);
    pause.OnUnload = [this] {
        if (engine_) engine_->PauseEnd();
    };
    pause.exec();
}

void frmMain::mnuexplore_Click() {
    shell_.OpenFolder(vars_.TargetFolder);
}

void frmMain::mnuabout_Click() {
    dialogs_.MsgBox(kTitle, "About", kInformation);
}

// Opens the selected queue entry in the browser; an entry without the scheme
// gets "http://" in front of its trimmed text, one with it is used as it stands.
void frmMain::List1_DblClick() {
    const QModelIndex current = list1_->currentIndex();
    const std::string entry = current.isValid() && list1_->selectionModel()->isSelected(current)
                                  ? list1Model_.Item(current.row())
                                  : std::string();
    const std::string address =
        LCase(Left(entry, 7)) == "http://" ? entry : "http://" + Trim(entry);
    shell_.OpenAddress(address);
}

void frmMain::Text1_GotFocus() {
    text1_->setSelection(0, static_cast<int>(text1_->text().size()));
}

// --- WindowSeam ---

std::string frmMain::Text1() const {
    return FromQt(text1_->text());
}

void frmMain::SetText1(const std::string& text) {
    text1_->setText(ToQt(text));
}

void frmMain::SetText1Enabled(bool enabled) {
    text1_->setEnabled(enabled);
}

void frmMain::FocusText1() {
    text1_->setFocus();
}

bool frmMain::Command1Enabled() const {
    return commands_[0]->isEnabled();
}

void frmMain::SetCommand1Enabled(bool enabled) {
    commands_[0]->setEnabled(enabled);
}

void frmMain::SetCommand2Enabled(bool enabled) {
    commands_[1]->setEnabled(enabled);
}

void frmMain::SetPauseEnabled(bool enabled) {
    mnupause_->setEnabled(enabled);
}

std::string frmMain::TxtMax() const {
    return FromQt(txtMax_->currentText());
}

void frmMain::SetTxtMax(const std::string& text) {
    txtMax_->setEditText(ToQt(text));
}

void frmMain::SetLabel6(const std::string& caption) {
    labels_[6]->setText(ToQt(caption));
}
void frmMain::SetLabel3(const std::string& caption) {
    labels_[3]->setText(ToQt(caption));
}
void frmMain::SetLabel4(const std::string& caption) {
    labels_[4]->setText(ToQt(caption));
}
void frmMain::SetLabel5(const std::string& caption) {
    labels_[5]->setText(ToQt(caption));
}

QLabel* frmMain::RowLabel(const std::array<QLabel*, kRowCount + 1>& row, int slot) const {
    return slot >= 1 && slot <= kRowCount ? row[static_cast<std::size_t>(slot)] : nullptr;
}

void frmMain::SetRowStatus(int slot, const std::string& caption) {
    if (QLabel* label = RowLabel(rows_.l, slot)) label->setText(ToQt(caption));
}

void frmMain::SetRowSize(int slot, const std::string& caption) {
    if (QLabel* label = RowLabel(rows_.k, slot)) label->setText(ToQt(caption));
}

void frmMain::SetRowReceived(int slot, const std::string& caption) {
    if (QLabel* label = RowLabel(rows_.k2, slot)) label->setText(ToQt(caption));
}

// Unloads the window (its unload asks nothing while the engine is stopping)
// and shows it again reloaded from scratch; its first activation opens the
// wizard again.
void frmMain::ReloadWindow() {
    if (engine_ && !engine_->ExitRequested()) return;
    hide();
    Form_Load();
    show();
}

void frmMain::EndProgram() {
    if (OnEndProgram) OnEndProgram();
}

// --- WizardHost ---

void frmMain::ConnectNowNow() {
    if (engine_) engine_->ConnectNowNow();
}

bool frmMain::SetTmrOutInterval(int slot, long long ms) {
    if (!engine_ || slot < 1 || slot > kRowCount || ms < 0 || ms > INT_MAX) return false;
    engine_->SetTimeoutInterval(slot, static_cast<int>(ms));
    return true;
}

long long frmMain::TmrOutInterval(int slot) const {
    if (!engine_ || slot < 1 || slot > kRowCount) return 0;
    return engine_->TimeoutInterval(slot);
}

void frmMain::ShowKeywordFilterDialog() {
    if (ShowFilterDialog) ShowFilterDialog();
}

}  // namespace vantorin

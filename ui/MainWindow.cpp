#include "ui/MainWindow.h"

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

#include "engine/Captions.h"
#include "platform/gui/DesignFont.h"
#include "platform/gui/Latin1.h"
#include "platform/gui/ScreenPlacement.h"
#include "platform/gui/Twips.h"
#include "text/Scheme.h"
#include "text/Strings.h"
#include "ui/PauseDialog.h"

namespace vantorin {

namespace {

constexpr const char* kTitle = "Vantorin Website Downloader 1.9";
// The window draws the model at most this often, so a page that queues a
// thousand links costs the queue list one update, not a thousand.
constexpr int kFrameMs = 100;

// A picture box: a sunken panel.
QFrame* MakePanel(QWidget* parent, const char* name, QFrame::Shape shape) {
    auto* panel = new QFrame(parent);
    panel->setObjectName(QString::fromLatin1(name));
    panel->setFrameShape(shape);
    panel->setFrameShadow(QFrame::Sunken);
    return panel;
}

void Show(QLabel* label, const std::string& text) {
    const QString shown = ToQt(text);
    if (label->text() != shown) label->setText(shown);
}

}  // namespace

MainWindow::MainWindow(CrawlEngine& engine, Dialogs& dialogs, ShellOpen& shell, QWidget* parent)
    : QMainWindow(parent),
      engine_(engine),
      dialogs_(dialogs),
      shell_(shell),
      queueModel_(engine.Model().queue) {
    setObjectName(QStringLiteral("mainWindow"));
    // The program ends when the exit question says so, not when the window
    // hides to reload after a stop.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    setWindowTitle(QString::fromLatin1(kTitle));
    BuildControls();
    BuildMenu();
    MakeRows();
    FillConnectionsBox();
    layout_ = DesignLayout();
    resize(TwipsToPixels(kFormWidth, logicalDpiX()), TwipsToPixels(kFormHeight, logicalDpiY()));
    // Placed by the program, not left to the window manager: the wizard opens
    // centred over the window as soon as it is shown, before a window manager
    // would have placed it, and a reload shows it where it was.
    move(CentredOver(screen()->availableGeometry(), size()));
    engine_.onEvent = [this](const CrawlEvent& event) { OnEvent(event); };
    connect(&frames_, &QTimer::timeout, this, [this] { Render(); });
    frames_.start(kFrameMs);
    Render();
}

MainWindow::~MainWindow() {
    engine_.onEvent = nullptr;
}

QLabel* MainWindow::MakeLabel(QWidget* parent, const char* name, const char* caption) {
    auto* label = new QLabel(QString::fromLatin1(caption), parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setFont(DesignFont());
    return label;
}

void MainWindow::BuildControls() {
    auto* form = new QWidget(this);
    form->setObjectName(QStringLiteral("form"));
    setCentralWidget(form);

    const auto makeButton = [this](QWidget* parent, const char* name, QStyle::StandardPixmap icon,
                                   const char* tip) {
        auto* button = new QPushButton(parent);
        button->setObjectName(QString::fromLatin1(name));
        button->setIcon(style()->standardIcon(icon));
        button->setToolTip(QString::fromLatin1(tip));
        return button;
    };
    toolbar_ = MakePanel(form, "toolbar", QFrame::NoFrame);
    startButton_ = makeButton(form, "startButton", QStyle::SP_MediaPlay, "Start downloading");
    stopButton_ = makeButton(toolbar_, "stopButton", QStyle::SP_MediaStop, "Stop downloading");
    filtersButton_ =
        makeButton(toolbar_, "filtersButton", QStyle::SP_FileDialogDetailedView, "Keyword filters");
    exploreButton_ = makeButton(toolbar_, "exploreButton", QStyle::SP_DirOpenIcon,
                                "Explore the download folder");

    address_ = new QLineEdit(form);
    address_->setObjectName(QStringLiteral("address"));
    address_->installEventFilter(this);

    connectionPanel_ = MakePanel(form, "connectionPanel", QFrame::Panel);
    connectionPanel_->setAutoFillBackground(true);
    connectionPanel_->setBackgroundRole(QPalette::Base);
    dataInColumn_ = MakePanel(connectionPanel_, "dataInColumn", QFrame::Panel);
    dataInColumn_->setAutoFillBackground(true);
    dataInColumn_->setBackgroundRole(QPalette::Base);
    connectionsHeading_ = MakeLabel(connectionPanel_, "connectionsHeading", "Connections");
    dataInHeading_ = MakeLabel(dataInColumn_, "dataInHeading", "Data In");
    connectionsHeading_->setFont(DesignFont(8.25, true));
    dataInHeading_->setFont(DesignFont(8.25, true));

    downloadedLabel_ = MakeLabel(form, "downloadedLabel", "Downloaded");
    downloadedCount_ = MakeLabel(form, "downloadedCount", "");
    bytesCount_ = MakeLabel(form, "bytesCount", "");
    queuedLabel_ = MakeLabel(form, "queuedLabel", "Queued");
    queuedCount_ = MakeLabel(form, "queuedCount", "");
    statusLine_ = MakeLabel(form, "statusLine", "");
    connectionsFooter_ = MakeLabel(form, "connectionsFooter", "");
    queueHeading_ = MakeLabel(form, "queueHeading", "Queued Files");
    queueHeading_->setFont(DesignFont(8.25, true));
    connectionsQuestion_ = MakeLabel(form, "connectionsQuestion", "How many connections?");
    connectionsQuestion_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    connectionsBox_ = new QComboBox(form);
    connectionsBox_->setObjectName(QStringLiteral("connectionsBox"));
    connectionsBox_->setEditable(true);
    connectionsBox_->setInsertPolicy(QComboBox::NoInsert);

    queue_ = new QListView(form);
    queue_->setObjectName(QStringLiteral("queue"));
    queue_->setModel(&queueModel_);
    queue_->setUniformItemSizes(true);
    queue_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    queue_->setSelectionMode(QAbstractItemView::SingleSelection);

    connect(startButton_, &QPushButton::clicked, this, [this] { StartClicked(); });
    connect(stopButton_, &QPushButton::clicked, this, [this] { StopClicked(); });
    connect(filtersButton_, &QPushButton::clicked, this, [this] { FiltersClicked(); });
    connect(exploreButton_, &QPushButton::clicked, this, [this] { ExploreChosen(); });
    connect(address_, &QLineEdit::textEdited, this,
            [this](const QString& text) { engine_.SetAddress(FromQt(text)); });
    // Enter starts; no other key does anything.
    connect(address_, &QLineEdit::returnPressed, this, [this] { StartClicked(); });
    connect(connectionsBox_->lineEdit(), &QLineEdit::textEdited, this,
            [this](const QString& text) { engine_.TypeConnectionLimit(FromQt(text)); });
    connect(connectionsBox_, &QComboBox::activated, this, [this](int index) {
        engine_.ChooseConnectionLimit(FromQt(connectionsBox_->itemText(index)));
    });
    connect(queue_, &QListView::doubleClicked, this, [this] { QueueDoubleClicked(); });
}

void MainWindow::BuildMenu() {
    const auto addMenu = [this](const char* name, const char* caption) {
        QMenu* menu = menuBar()->addMenu(QString::fromLatin1(caption));
        menu->setObjectName(QString::fromLatin1(name));
        menu->menuAction()->setObjectName(QString::fromLatin1(name));
        return menu;
    };
    // A shortcut only reaches the item's own handler, beside its mnemonic.
    const auto addItem = [this](QMenu* menu, const char* name, const char* caption,
                                void (MainWindow::*handler)(), QKeySequence shortcut = {}) {
        QAction* item = menu->addAction(QString::fromLatin1(caption));
        item->setObjectName(QString::fromLatin1(name));
        item->setShortcut(shortcut);
        connect(item, &QAction::triggered, this, [this, handler] { (this->*handler)(); });
        return item;
    };

    QMenu* file = addMenu("fileMenu", "&File");
    addItem(file, "newSiteItem", "&New Site", &MainWindow::NewSiteChosen, Qt::CTRL | Qt::Key_N);
    file->addSeparator();
    addItem(file, "exitItem", "&Exit Vantorin", &MainWindow::ExitChosen, Qt::CTRL | Qt::Key_Q);

    QMenu* sites = addMenu("sitesMenu", "&Sites");
    pauseAction_ = addItem(sites, "pauseItem", "Pause Download", &MainWindow::PauseChosen);
    sites->addSeparator();
    addItem(sites, "exploreItem", "&Explore...", &MainWindow::ExploreChosen);
    sites->addSeparator();
    addItem(sites, "preferencesItem", "&Preferences...", &MainWindow::NewSiteChosen);

    QMenu* help = addMenu("helpMenu", "&Help");
    addItem(help, "aboutItem", "&About", &MainWindow::AboutChosen, Qt::Key_F1);
}

// Rows 1 to 24, each below the one before it. The size label stays hidden, so
// a row shows its number, its status and the bytes received.
void MainWindow::MakeRows() {
    for (int n = 1; n <= kConnectionCount; ++n) {
        RowLabels& row = rows_[static_cast<std::size_t>(n - 1)];
        const QByteArray number = QByteArray::number(n);
        row.number =
            MakeLabel(connectionPanel_, ("rowNumber" + number).constData(), number.constData());
        row.number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        row.status = MakeLabel(connectionPanel_, ("rowStatus" + number).constData(), "");
        row.size = MakeLabel(dataInColumn_, ("rowSize" + number).constData(), "");
        row.received = MakeLabel(dataInColumn_, ("rowReceived" + number).constData(), "");
        row.size->hide();
    }
    dataInColumn_->raise();  // a long status text ends under the "Data In" column
}

void MainWindow::FillConnectionsBox() {
    connectionsBox_->clear();
    for (int n = 1; n <= kConnectionCount; ++n) connectionsBox_->addItem(QString::number(n));
}

void MainWindow::Place(QWidget* widget, const TwipRect& r) const {
    PlaceTwips(*widget, r.Left, r.Top, r.Width, r.Height);
}

void MainWindow::ApplyLayout() {
    const MainLayout& d = layout_;
    Place(startButton_, d.startButton);
    Place(address_, d.address);
    Place(toolbar_, d.toolbar);
    Place(stopButton_, d.stopButton);
    Place(filtersButton_, d.filtersButton);
    Place(exploreButton_, d.exploreButton);
    Place(connectionPanel_, d.connectionPanel);
    Place(dataInColumn_, d.dataInColumn);
    Place(connectionsHeading_, d.connectionsHeading);
    Place(dataInHeading_, d.dataInHeading);
    for (int n = 1; n <= kConnectionCount; ++n) {
        const auto below = [n](TwipRect r) {
            r.Top += n * kRowHeight;
            return r;
        };
        const RowLabels& row = Row(n);
        Place(row.number, below(d.rowNumber));
        Place(row.status, below(d.rowStatus));
        Place(row.size, below(d.rowSize));
        Place(row.received, below(d.rowReceived));
    }
    Place(downloadedLabel_, d.downloadedLabel);
    Place(downloadedCount_, d.downloadedCount);
    Place(bytesCount_, d.bytesCount);
    Place(queuedLabel_, d.queuedLabel);
    Place(queuedCount_, d.queuedCount);
    Place(connectionsQuestion_, d.connectionsQuestion);
    Place(connectionsBox_, d.connectionsBox);
    Place(connectionsFooter_, d.connectionsFooter);
    Place(queueHeading_, d.queueHeading);
    Place(queue_, d.queue);
    Place(statusLine_, d.statusLine);
}

void MainWindow::resizeEvent(QResizeEvent* e) {
    QMainWindow::resizeEvent(e);
    ResizeLayout(layout_, PixelsToTwips(width(), logicalDpiX()),
                 PixelsToTwips(height(), logicalDpiY()));
    ApplyLayout();
}

// --- drawing the model

void MainWindow::Render() {
    const CrawlModel& m = engine_.Model();
    // Only when it differs, so the caret stays where typing left it.
    if (FromQt(address_->text()) != m.address) address_->setText(ToQt(m.address));
    address_->setEnabled(!m.Running());
    if (m.addressFocusRequests != focusRequestsSeen_) {
        focusRequestsSeen_ = m.addressFocusRequests;
        address_->setFocus();
    }
    if (FromQt(connectionsBox_->currentText()) != m.connectionLimit)
        connectionsBox_->setEditText(ToQt(m.connectionLimit));
    startButton_->setEnabled(!m.Running());
    stopButton_->setEnabled(m.Running());
    pauseAction_->setEnabled(m.pauseAllowed);

    const CounterCaptions counts = CaptionsOf(m.shown);
    Show(downloadedCount_, counts.files);
    Show(bytesCount_, counts.bytes);
    Show(queuedCount_, counts.queued);
    Show(statusLine_, StatusLineOf(m));
    for (int n = 1; n <= kConnectionCount; ++n) {
        const RowTexts texts = RowTextsOf(m.Row(n));
        Show(Row(n).status, texts.status);
        Show(Row(n).size, texts.size);
        Show(Row(n).received, texts.received);
    }
    queueModel_.Sync();
}

// --- what the engine tells

void MainWindow::OnEvent(const CrawlEvent& event) {
    switch (event.kind) {
        case CrawlEvent::Kind::SiteDownloaded:
            Render();
            dialogs_.Ask(
                "The website has been downloaded.\r\n\r\nWould you like to browse the download "
                "directory?",
                "Done.", kYesNo + kInformation, [this](int answer) {
                    if (answer == kAnswerYes) shell_.OpenFolder(engine_.TargetFolder());
                });
            break;
        case CrawlEvent::Kind::Stopped:
            Reload();
            break;
        case CrawlEvent::Kind::Ended:
            Leave();
            break;
        case CrawlEvent::Kind::LimitRefused:
            Render();
            dialogs_.Ask("Must be a number of connections from 1 to 24", "Try Again", kCritical,
                         {});
            break;
        default:
            break;
    }
}

void MainWindow::Reload() {
    stopping_ = true;
    hide();
    engine_.Reload();
    FillConnectionsBox();
    queue_->setVisible(true);
    Render();
    wizardOnActivation_ = true;
    show();
}

void MainWindow::Leave() {
    queue_->setVisible(true);
    leaving_ = true;
    close();
    // exit(), not quit(): quit() would ask every window to close first, and so
    // ask this window's exit question a second time.
    QCoreApplication::exit(0);
}

// --- activation, focus, closing

bool MainWindow::event(QEvent* e) {
    // Shown counts as activated too: without a window manager no activation comes.
    const bool activated = e->type() == QEvent::WindowActivate || e->type() == QEvent::Show;
    if (activated && wizardOnActivation_) {
        // Opened once the activation has been handled, so the window is drawn first.
        QTimer::singleShot(0, this, [this] { Activated(); });
    }
    return QMainWindow::event(e);
}

void MainWindow::Activated() {
    if (!wizardOnActivation_) return;
    wizardOnActivation_ = false;
    OpenWizard();
    stopping_ = false;
}

void MainWindow::OpenWizard() {
    if (wizard_) {  // one wizard at a time: the open one comes to the front
        wizard_->raise();
        wizard_->activateWindow();
        return;
    }
    if (openNewSiteWizard) wizard_ = openNewSiteWizard();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* e) {
    if (watched == address_ && e->type() == QEvent::FocusIn) {
        // After the click that gave the focus has placed the caret.
        QTimer::singleShot(0, this, [this] { AddressFocused(); });
    }
    return QMainWindow::eventFilter(watched, e);
}

void MainWindow::AddressFocused() {
    address_->setSelection(0, static_cast<int>(address_->text().size()));
}

// Every way of closing the window asks once. No keeps everything as it is;
// any other answer stops a running crawl, sweeps the placeholders, and ends
// the program once the engine has done so.
void MainWindow::closeEvent(QCloseEvent* e) {
    if (leaving_) {
        e->accept();
        return;
    }
    e->ignore();
    if (stopping_) {  // the window is being reloaded after a stop: nothing to ask
        engine_.Exit();
        return;
    }
    dialogs_.Ask("Are you sure you want to exit?", "Exit Vantorin", kYesNo + kInformation,
                 [this](int answer) {
                     if (answer != kAnswerNo) engine_.Exit();
                 });
}

// --- the buttons and the menu

void MainWindow::StartClicked() {
    engine_.Start();
    Render();
}

void MainWindow::StopClicked() {
    AskStop({});
}

// The question waits for its answer while the crawl goes on: a crawl that
// completes meanwhile ends as it always does, and the answer's own steps run
// when it comes. `then` runs after them, whatever the answer.
void MainWindow::AskStop(std::function<void()> then) {
    dialogs_.Ask("Are you sure you want to cancel downloading the current website?",
                 "Stop Download", kYesNo + kInformation,
                 [this, then = std::move(then)](int answer) {
                     if (answer == kAnswerYes) engine_.Stop();
                     if (then) then();
                 });
}

void MainWindow::FiltersClicked() {
    if (openFilters) openFilters();
}

// The wizard follows the stop question's answer, and only when no crawl runs
// by then (a stop, or a crawl that completed meanwhile).
void MainWindow::NewSiteChosen() {
    const auto openWhenIdle = [this] {
        if (!engine_.Model().Running()) OpenWizard();
    };
    if (engine_.Model().Running()) {
        AskStop(openWhenIdle);
    } else {
        openWhenIdle();
    }
}

void MainWindow::ExitChosen() {
    close();
}

// Pausing holds the scheduler until the pause dialog closes, however it is
// closed. Nobody waits in the dialog: connections already open go on.
void MainWindow::PauseChosen() {
    engine_.Pause();
    auto* pause = new PauseDialog(this);
    pause->setAttribute(Qt::WA_DeleteOnClose);
    pause->onClosed = [this] { engine_.Resume(); };
    pause->show();
}

void MainWindow::ExploreChosen() {
    shell_.OpenFolder(engine_.TargetFolder());
}

void MainWindow::AboutChosen() {
    dialogs_.Ask(kTitle, "About", kInformation, {});
}

// Opens the selected queue entry in the browser; an entry without the scheme
// gets "http://" in front of its trimmed text, one with it is used as it stands.
void MainWindow::QueueDoubleClicked() {
    const QModelIndex current = queue_->currentIndex();
    const std::string entry =
        current.isValid() && queue_->selectionModel()->isSelected(current)
            ? engine_.Model().queue.At(static_cast<std::size_t>(current.row()))
            : std::string();
    shell_.OpenAddress(StartsWithHttp(entry) ? entry : "http://" + Trim(entry));
}

}  // namespace vantorin

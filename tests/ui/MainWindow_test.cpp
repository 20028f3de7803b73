#include "ui/frmMain.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QtWidgets>

#include "text/Strings.h"
#include "platform/gui/AppIcon.h"
#include "platform/gui/QtDialogs.h"
#include "tests/support/EngineWorld.h"

namespace vantorin::testing {
namespace {

// The main window over an engine world, its wizard and filter dialog counted.
template <class DialogsT>
struct MainWindowWorld : EngineWorld<DialogsT> {
    MainWindowWorld() {
        window.ShowNewSiteWizard = [this] { ++wizards; };
        window.ShowFilterDialog = [this] { ++filterDialogs; };
    }
    frmMain window{this->engine, this->vars, this->dialogs, this->shell};
    int wizards = 0, filterDialogs = 0;
};

class UiTest : public ::testing::Test, public MainWindowWorld<ScriptedDialogs> {};

std::string Text(const QLabel* label) {
    return label->text().toStdString();
}

TEST_F(UiTest, TwentyFourRowsLabelsAndButtonsShowTheState) {
    window.show();
    for (int i = 1; i <= kSlotCount; ++i) {
        const std::string n = std::to_string(i);
        state.SetRowStatus(i, "status " + n);
        state.SetRowSize(i, "size " + n);
        state.SetRowReceived(i, "in " + n);
        EXPECT_EQ(Text(window.l(i)) + Text(window.k(i)) + Text(window.k2(i)) + Text(window.x(i)),
                  "status " + n + "size " + n + "in " + n + n);
        EXPECT_FALSE(window.k(i)->isVisible());  // only the size label stays hidden
    }
    const int queueWidth = window.list1()->width();
    window.resize(window.width() + 150, window.height());
    EXPECT_NEAR(window.list1()->width(), queueWidth + 150, 1);  // laid out again

    state.SetLabel3("3 Files");
    state.SetLabel4("4 Bytes");
    state.SetLabel5("5 Files");
    EXPECT_EQ(Text(window.label(3)) + Text(window.label(4)) + Text(window.label(5)),
              "3 Files4 Bytes5 Files");
    for (const bool on : {false, true}) {
        for (auto set : {&CrawlState::SetCommand1Enabled, &CrawlState::SetCommand2Enabled,
                         &CrawlState::SetText1Enabled, &CrawlState::SetPauseEnabled})
            (state.*set)(on);
        EXPECT_EQ((std::vector<bool>{window.command(1)->isEnabled(), window.command(2)->isEnabled(),
                                     window.text1()->isEnabled(), window.mnupause()->isEnabled()}),
                  std::vector<bool>(4, on));
    }
    window.hide();
}

// A wrong resource path fails silently at run time: the windows would simply
// show the desktop's generic glyph.
TEST(AppIcon, EverySizeIsCompiledIn) {
    SetApplicationIcon();
    for (int side : {48, 128, 256})
        EXPECT_TRUE(QApplication::windowIcon().availableSizes().contains(QSize(side, side)));
    EXPECT_EQ(QGuiApplication::desktopFileName(), "org.vantorin.Vantorin");
}

TEST_F(UiTest, KeysButtonsAndMenusReachTheirVerbsAndExitAsksFirst) {
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QCoreApplication::processEvents();
    EXPECT_EQ(wizards, 1);                                     // opened by the first activation
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);  // no crawl: the wizard at once
    EXPECT_EQ(wizards, 2);
    QTest::keyClick(&window, Qt::Key_F1);
    EXPECT_TRUE(StartsWith(dialogs.asked.at(0), "About 64: "));
    vars.TargetFolder = "C:\\Websites\\";
    window.findChild<QAction*>("mnuexplore")->trigger();
    window.command(4)->click();
    EXPECT_EQ(shell.folders, (std::vector<std::string>{"C:\\Websites\\", "C:\\Websites\\"}));
    window.command(3)->click();
    EXPECT_EQ(filterDialogs, 1);

    window.hide();
}

// Ctrl+Q, File > Exit and the window's close button, idle and crawling: each
// asks once; No keeps the window shown and the crawl running, Yes stops the
// crawl and ends the event loop.
TEST(MainWindowExit, EachWayAsksOnceNoKeepsEverythingYesEndsTheLoop) {
    const std::pair<const char*, void (*)(frmMain&)> ways[] = {
        {"Ctrl+Q", [](frmMain& w) { QTest::keyClick(&w, Qt::Key_Q, Qt::ControlModifier); }},
        {"File > Exit", [](frmMain& w) { w.findChild<QAction*>("mnuexit")->trigger(); }},
        {"close button", [](frmMain& w) { w.close(); }}};
    for (const auto& [way, leave] : ways) {
        for (const bool crawling : {false, true}) {
            SCOPED_TRACE(::testing::Message() << way << (crawling ? ", crawling" : ", idle"));
            MainWindowWorld<ScriptedDialogs> w;
            w.dialogs.holdAnswers = true;
            w.window.show();
            QApplication::setActiveWindow(&w.window);
            ASSERT_TRUE(QTest::qWaitForWindowActive(&w.window));
            w.state.SetText1("a.test");
            if (crawling) w.window.Command1_Click();
            leave(w.window);
            ASSERT_EQ(w.dialogs.held.size(), 1u);
            w.dialogs.held.back()(kAnswerNo);
            EXPECT_EQ(std::tuple(w.window.isVisible(), w.engine.Running()),
                      std::tuple(true, crawling));
            QTimer::singleShot(0, [&] {
                leave(w.window);
                w.dialogs.held.back()(kAnswerYes);
            });
            QTimer leftRunning;
            QObject::connect(&leftRunning, &QTimer::timeout, [] { QCoreApplication::exit(99); });
            leftRunning.start(3000);
            EXPECT_EQ(QCoreApplication::exec(), 0);
            EXPECT_EQ(std::tuple(w.dialogs.held.size(), w.window.isVisible(), w.engine.Running()),
                      std::tuple(2u, false, false));
            EXPECT_TRUE(StartsWith(w.dialogs.asked.back(), "Exit Vantorin 68: "));
        }
    }
}

// What is typed reaches the state, Enter starts, and the cleaned address
// shown is selected when the box takes the focus; the connections count,
// typed empty, is refused, and chosen from the list lets the rows above it go.
TEST_F(UiTest, TypingAndChoosingReachTheEngine) {
    QTest::keyClicks(window.text1(), "example.com");
    EXPECT_EQ(state.Text1(), "example.com");
    QTest::keyClick(window.text1(), Qt::Key_Return);
    window.Text1_GotFocus();
    EXPECT_EQ(std::pair(window.command(1)->isEnabled(), window.text1()->selectedText()),
              std::pair(false, QString("www.example.com")));

    QTest::keyClick(window.txtMax()->lineEdit(), Qt::Key_Backspace);
    EXPECT_EQ(window.txtMax()->currentText().toStdString(), "4");
    EXPECT_EQ(dialogs.asked.size(), 1u);
    state.SetRowStatus(5, "Downloading www.a.com/x");
    window.txtMax()->setCurrentIndex(1);
    emit window.txtMax()->activated(1);  // "2"
    EXPECT_EQ(state.txtMax(), "2");
    EXPECT_EQ(Text(window.l(5)), "Not Connected.");
}

TEST_F(UiTest, ActivationShowsTheWizardOnceAndReloadStartsOverFromTheDesign) {
    QCoreApplication::processEvents();
    EXPECT_EQ(wizards, 0);  // not before the window is shown
    state.Stopping = true;
    window.Form_Activate();
    window.Form_Activate();
    EXPECT_EQ(wizards, 1);
    EXPECT_FALSE(state.Stopping);

    state.List1.AddItem("www.a.com/1");
    EXPECT_EQ(window.list1()->model()->rowCount(), 1);
    state.SetTxtMax("9");
    state.Stopping = true;
    window.ReloadWindow();
    EXPECT_TRUE(dialogs.asked.empty());  // the unload asks nothing while stopping
    // The old rows are gone, the queue and the connections count as designed.
    EXPECT_EQ(std::tuple(window.findChildren<QLabel*>("l24").size(),
                         window.list1()->model()->rowCount(), window.txtMax()->currentText()),
              std::tuple(1, 0, QString("4")));
    window.Form_Activate();
    EXPECT_EQ(wizards, 2);
    window.hide();
}

// The stop question waits for its answer while the crawl goes on: a crawl
// that completes meanwhile ends as designed ("Done." asked), and the answer
// then runs its own steps: Yes stops and reloads; a New Site answered No
// still opens the wizard, since no crawl runs any more.
TEST_F(UiTest, ACrawlCompletingDuringTheStopQuestionEndsAndTheAnswerFollows) {
    const std::tuple<void (frmMain::*)(), int, int> cases[] = {
        {&frmMain::Command2_Click, kAnswerYes, 0},
        {&frmMain::mnunew_Click, kAnswerNo, 1},
        {&frmMain::mnupref_Click, kAnswerYes, 1}};
    for (const auto& [click, answer, wizardsAfter] : cases) {
        wizards = 0;
        dialogs.held.clear();
        state.SetText1("a.test");
        window.Command1_Click();
        sockets[0]->Accept();
        dialogs.holdAnswers = true;
        (window.*click)();
        dialogs.holdAnswers = false;
        ASSERT_EQ(dialogs.held.size(), 1u);
        EXPECT_TRUE(StartsWith(dialogs.asked.back(), "Stop Download 68: "));

        dialogs.answers = {kAnswerNo};
        sockets[0]->Receive("H\r\n\r\nthe last page", true);
        EXPECT_TRUE(StartsWith(dialogs.asked.back(), "Done. 68: "));
        EXPECT_EQ(Text(window.label(6)) + std::to_string(wizards), "Website Downloaded!0");

        dialogs.held.front()(answer);
        const bool stopped = answer == kAnswerYes;
        EXPECT_EQ(std::make_tuple(Text(window.label(6)), state.Stopping,
                                  window.mnupause()->isEnabled(), wizards),
                  std::make_tuple(stopped ? "Operation Cancelled." : "Website Downloaded!", stopped,
                                  !stopped, wizardsAfter));
        state.Stopping = false;
    }
    window.hide();
}

// A click handled while a finished job is being scanned (its row empty, as
// designed for the scan) opens its dialog without waiting in it: the job
// ends beneath the open dialog and its row shows it, instead of staying
// empty, its socket held, until the dialog is closed. Only the pause dialog
// holds the tick, however it is closed.
TEST(MainWindowDialogs, AJobBeingScannedFinishesWhileADialogItsClickOpenedStays) {
    const std::pair<const char*, std::function<void(frmMain&)>> clicks[] = {
        {"pause", [](frmMain& w) { w.mnupause()->trigger(); }},
        {"stop", [](frmMain& w) { w.command(2)->click(); }},
        {"about", [](frmMain& w) { w.mnuabout_Click(); }},
        {"exit", [](frmMain& w) { w.close(); }},
        {"connections typed", [](frmMain& w) { QTest::keyClick(w.txtMax()->lineEdit(), 'x'); }}};
    for (const auto& [name, click] : clicks) {
        MainWindowWorld<QtDialogs> w;
        w.state.SetText1("a.test");
        w.window.Command1_Click();
        w.state.List1.AddItem("www.a.test/later.htm");  // the crawl goes on after this job
        w.sockets[0]->Accept();
        bool clicked = false;
        w.duringYield = [&] {
            if (!clicked && w.state.Row(1).Status.empty()) {
                clicked = true;
                click(w.window);
            }
        };
        // A dialog waited in would hold the job until this closes it.
        bool closedByTimer = false;
        QObject timerScope;
        QTimer::singleShot(3000, &timerScope, [&] {
            closedByTimer = true;
            if (QWidget* dialog = QApplication::activeModalWidget()) dialog->close();
        });
        w.sockets[0]->Receive("H\r\n\r\n<a href='x.htm'>", true);
        QWidget* dialog = QApplication::activeModalWidget();
        EXPECT_TRUE(clicked && !closedByTimer) << name;
        ASSERT_NE(dialog, nullptr) << name;
        EXPECT_EQ(w.state.Row(1).Status, "Downloading www.a.test") << name;
        FakeTimer& tick = *w.timers.at(kSlotCount);
        EXPECT_EQ(tick.Enabled(), std::string(name) != "pause") << name;
        dialog->close();
        EXPECT_TRUE(w.sockets[0]->state == kSockClosed && tick.Enabled()) << name;
    }
}

}  // namespace
}  // namespace vantorin::testing

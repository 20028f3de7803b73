#include "ui/MainWindow.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QTest>
#include <QtWidgets>

#include "engine/Captions.h"
#include "platform/gui/QtDialogs.h"
#include "tests/support/EngineWorld.h"
#include "tests/support/WidgetSnapshot.h"
#include "text/Strings.h"
#include "ui/PauseDialog.h"

namespace vantorin::testing {
namespace {

// The main window over an engine world, its wizard and filter dialog counted.
struct MainWindowWorld : EngineWorld {
    MainWindowWorld() : window(engine, dialogs, shell) {
        window.openNewSiteWizard = [this] {
            ++wizards;
            return nullptr;
        };
        window.openFilters = [this] { ++filterDialogs; };
    }
    // A response on connection 1 (the server closing after it, unless told
    // otherwise), the job run to its end, the window drawn.
    void Answer(const std::string& response, bool closes = true) {
        socket(1).Accept();
        socket(1).Receive(response, closes);
        loop.RunUntilIdle();
        window.Render();
    }
    MainWindow window;
    int wizards = 0, filterDialogs = 0;
};

class UiTest : public ::testing::Test, public MainWindowWorld {};

// Each state of the main window, control by control: idle at the start, a
// crawl with a few rows at work and the queue taken from, the pause dialog
// (which holds the tick until it closes), and the window reloaded after a
// stop. The wizard opens on the first activation only, one at a time, and on
// the reloaded window's; the queue widens with the window.
TEST_F(UiTest, EachStateLooksAsItsSnapshot) {
    QAbstractItemModelTester queueRules(window.queue()->model(),
                                        QAbstractItemModelTester::FailureReportingMode::Fatal);
    QCoreApplication::processEvents();
    EXPECT_EQ(wizards, 0);  // not before the window is shown
    window.show();
    window.Render();
    ExpectSnapshot(window, "ui/snapshots/main-idle.txt");
    QCoreApplication::processEvents();
    window.Activated();
    EXPECT_EQ(wizards, 1);
    WriteNativeFile(dir.NativePath("prog/temp/filetypes.txt"), ".htm\r\n");
    Start("www.a.test/");
    Answer("H\r\n\r\n<a href='1.htm'> <a href='2.htm'> <a href='3.htm'> <a href='4.htm'>");
    tick().Fire();
    tick().Fire();
    Answer("HTTP/1.0 200 OK\r\nContent-Length: 1200\r\n\r\nab", false);
    ExpectSnapshot(window, "ui/snapshots/main-crawling.txt");
    // A double click opens the selected queue entry in the browser; with the entry
    // current but not selected, the bare scheme.
    window.queue()->setCurrentIndex(window.queue()->model()->index(1, 0));
    emit window.queue()->doubleClicked(window.queue()->currentIndex());
    window.queue()->clearSelection();
    emit window.queue()->doubleClicked(window.queue()->currentIndex());
    EXPECT_EQ(shell.addresses, (std::vector<std::string>{"http://www.a.test/2.htm", "http://"}));
    window.pauseAction()->trigger();
    const QPointer<PauseDialog> pause = window.findChild<PauseDialog*>();
    ASSERT_NE(pause, nullptr);
    ExpectSnapshot(*pause, "ui/snapshots/pause.txt");
    EXPECT_FALSE(tick().enabled);
    pause->close();  // the crawl goes on, and the dialog is gone
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(tick().enabled && pause.isNull());
    dialogs.answers = {kAnswerYes};
    window.StopClicked();
    loop.RunUntilIdle();
    window.Render();
    ExpectSnapshot(window, "ui/snapshots/main-after-stop.txt");
    window.Activated();
    EXPECT_EQ(wizards, 2);
    window.queue()->setFocus();  // the stop's focus request is taken once, not at every frame
    window.Render();
    EXPECT_EQ(window.focusWidget(), window.queue());
    // The queue widens with the window, and what stands at its right moves with it.
    const auto x = [&](const char* name) { return window.findChild<QWidget*>(name)->x(); };
    const auto rightSide = [&] {
        return std::tuple(window.queue()->width(), x("connectionsFooter"), x("toolbar"));
    };
    const auto [queueWidth, footerLeft, toolbarLeft] = rightSide();
    window.resize(window.width() + 150, window.height());
    EXPECT_EQ(rightSide(), std::tuple(queueWidth + 150, footerLeft + 150, toolbarLeft + 150));
}

// Keys, buttons and menus reach their verbs, and typing and choosing the engine.
TEST_F(UiTest, KeysButtonsMenusAndTypingReachTheirVerbs) {
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QCoreApplication::processEvents();
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);  // no crawl: the wizard at once
    EXPECT_EQ(wizards, 2);                 // the first opened by the first activation
    QTest::keyClick(&window, Qt::Key_F1);  // its box is the first asked, checked below
    engine.SetTargetFolder("C:\\Websites\\");
    window.findChild<QAction*>("exploreItem")->trigger();
    window.exploreButton()->click();
    EXPECT_EQ(shell.folders, (std::vector<std::string>{"C:\\Websites\\", "C:\\Websites\\"}));
    window.filtersButton()->click();
    EXPECT_EQ(filterDialogs, 1);

    // What is typed reaches the engine, Enter starts, and the cleaned address
    // shown is selected when the box takes the focus; the connections box takes
    // a typed count without adding it to its list, refuses one typed empty with
    // its message (back to 4), and chosen from the list lets the rows above it go.
    QTest::keyClicks(window.address(), "example.com");
    QTest::keyClick(window.address(), Qt::Key_Return);
    QFocusEvent focusIn(QEvent::FocusIn);
    QCoreApplication::sendEvent(window.address(), &focusIn);
    QCoreApplication::processEvents();
    EXPECT_EQ(std::pair(window.startButton()->isEnabled(), window.address()->selectedText()),
              std::pair(false, QString("www.example.com")));

    QLineEdit* typed = window.connectionsBox()->lineEdit();
    typed->selectAll();
    QTest::keyClicks(typed, "7");
    QTest::keyClick(typed, Qt::Key_Return);  // taken, not added to the list
    EXPECT_EQ(std::pair(model.connectionLimit, window.connectionsBox()->count()),
              std::pair(std::string("7"), 24));
    QTest::keyClick(typed, Qt::Key_Backspace);
    EXPECT_EQ(window.connectionsBox()->currentText().toStdString(), "4");
    EXPECT_EQ(dialogs.asked, (std::vector<std::string>{
                                 "About 64: Vantorin Website Downloader 1.9",
                                 "Try Again 16: Must be a number of connections from 1 to 24"}));
    emit window.connectionsBox()->activated(1);  // "2"
    EXPECT_EQ(model.connectionLimit, "2");
}

// Ctrl+Q, File > Exit and the window's close button, idle and crawling: each
// asks once; No keeps the window shown and the crawl running, Yes stops the
// crawl and ends the event loop.
TEST(MainWindowExit, EachWayAsksOnceNoKeepsEverythingYesEndsTheLoop) {
    const std::pair<const char*, void (*)(MainWindow&)> ways[] = {
        {"Ctrl+Q", [](MainWindow& w) { QTest::keyClick(&w, Qt::Key_Q, Qt::ControlModifier); }},
        {"File > Exit", [](MainWindow& w) { w.findChild<QAction*>("exitItem")->trigger(); }},
        {"close button", [](MainWindow& w) { w.close(); }}};
    for (const auto& [way, leave] : ways) {
        for (const bool crawling : {false, true}) {
            SCOPED_TRACE(::testing::Message() << way << (crawling ? ", crawling" : ", idle"));
            MainWindowWorld w;
            w.dialogs.holdAnswers = true;
            w.window.show();
            QApplication::setActiveWindow(&w.window);
            ASSERT_TRUE(QTest::qWaitForWindowActive(&w.window));
            if (crawling) w.Start("a.test");
            leave(w.window);
            ASSERT_EQ(w.dialogs.held.size(), 1u);
            w.dialogs.held.back()(kAnswerNo);
            EXPECT_EQ(std::tuple(w.window.isVisible(), w.model.Running()),
                      std::tuple(true, crawling));
            QTimer::singleShot(0, [&] {
                leave(w.window);
                w.dialogs.held.back()(kAnswerYes);
                w.loop.RunUntilIdle();
            });
            // A loop left running ends with 99.
            QTimer::singleShot(3000, &w.window, [] { QCoreApplication::exit(99); });
            EXPECT_EQ(QCoreApplication::exec(), 0);
            EXPECT_EQ(std::tuple(w.dialogs.held.size(), w.window.isVisible(), w.model.Running(),
                                 StartsWith(w.dialogs.asked.back(), "Exit Vantorin 68: ")),
                      std::tuple(2u, false, false, true));
        }
    }
}

// The stop question waits for its answer while the crawl goes on: a crawl
// that completes meanwhile ends as it always does ("Done." asked), and the
// answer then runs its own steps: Yes stops; a New Site answered No still
// opens the wizard, since no crawl runs any more. Done's Yes opens the folder.
TEST_F(UiTest, ACrawlCompletingDuringTheStopQuestionEndsAndTheAnswerFollows) {
    const std::tuple<void (MainWindow::*)(), int, int> cases[] = {
        {&MainWindow::StopClicked, kAnswerYes, 0}, {&MainWindow::NewSiteChosen, kAnswerNo, 1}};
    dialogs.holdAnswers = true;
    for (const auto& [click, answer, wizardsAfter] : cases) {  // the wizards counted across rows
        dialogs.held.clear();
        Start("a.test");
        (window.*click)();
        ASSERT_EQ(dialogs.held.size(), 1u);
        EXPECT_TRUE(StartsWith(dialogs.asked.back(), "Stop Download 68: "));
        Answer("H\r\n\r\nthe last page");
        EXPECT_EQ(dialogs.asked.back(),
                  "Done. 68: The website has been downloaded.\r\n\r\nWould "
                  "you like to browse the download directory?");
        dialogs.held.back()(kAnswerYes);  // Done.
        EXPECT_EQ(window.statusLine()->text() + QString::number(wizards), "Website Downloaded!0");
        dialogs.held.front()(answer);  // the stop question
        loop.RunUntilIdle();
        window.Render();
        const bool stopped = answer == kAnswerYes;
        EXPECT_EQ(
            std::tuple(window.statusLine()->text(), window.pauseAction()->isEnabled(), wizards),
            std::tuple(stopped ? "Operation Cancelled." : "Website Downloaded!", !stopped,
                       wizardsAfter));
    }
    EXPECT_EQ(shell.folders, std::vector<std::string>(2, engine.TargetFolder()));
}

}  // namespace
}  // namespace vantorin::testing

#include "ui/frmMain.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include "platform/Text.h"
#include "platform/gui/QtDialogs.h"
#include "tests/ui/UiFixture.h"

namespace vantorin::testing {
namespace {

std::string Caption(const QLabel* label) {
    return label->text().toStdString();
}

// A key typed into a widget, as the keyboard delivers it.
void Type(QWidget* widget, Qt::Key key, const QString& text) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(widget, &press);
}

TEST_F(UiTest, CaptionsMenusAndTheTwentyFourRows) {
    EXPECT_EQ(window.windowTitle().toStdString(), "Vantorin Website Downloader 1.9");
    // Placed before it is shown, so the wizard it opens at once stands over it.
    const QPoint centre = window.screen()->availableGeometry().center();
    EXPECT_NEAR(window.geometry().center().x(), centre.x(), 1);
    EXPECT_NEAR(window.geometry().center().y(), centre.y(), 1);
    const std::pair<int, std::string> captions[] = {
        {1, "Queued"},  {2, "Downloaded"},     {3, "0 Files"},      {4, "0 Bytes"},
        {5, "0 Files"}, {6, "Not Connected."}, {8, "Queued Files"}, {9, "How many connections?"}};
    for (const auto& [n, caption] : captions) {
        EXPECT_EQ(Caption(window.label(n)), caption);
        EXPECT_EQ(window.label(n)->font().family().toStdString(), "Verdana") << caption;
    }
    EXPECT_EQ(Caption(window.findChild<QLabel*>("ConnectionsHeading")), "Connections");
    EXPECT_EQ(Caption(window.findChild<QLabel*>("DataInHeading")), "Data In");

    QStringList menus;
    for (QAction* top : window.menuBar()->actions()) {
        menus << top->objectName() + "=" + top->text();
        for (QAction* item : top->menu()->actions())
            menus << (item->isSeparator() ? "-"
                                          : item->objectName() + "=" + item->text() + " " +
                                                item->shortcut().toString());
    }
    EXPECT_EQ(menus,
              (QStringList{"mnufile=&File", "mnunew=&New Site Ctrl+N", "-",
                           "mnuexit=&Exit Vantorin Ctrl+Q", "mnusites=&Sites",
                           "mnupause=Pause Download ", "-", "mnuexplore=&Explore... ", "-",
                           "mnupref=&Preferences... ", "mnuhelp=&Help", "mnuabout=&About F1"}));

    window.show();
    for (int i = 1; i <= kSlotCount; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(Caption(window.l(i)), "Not Connected.");
        EXPECT_EQ(Caption(window.x(i)), std::to_string(i));
        EXPECT_TRUE(window.l(i)->isVisible() && window.x(i)->isVisible());
        EXPECT_TRUE(window.k2(i)->isVisible());
        EXPECT_FALSE(window.k(i)->isVisible());  // the size label is never shown
        // Each row stands right below the one before it.
        EXPECT_EQ(window.l(i)->y(), window.l(i - 1)->y() + window.l(i - 1)->height());
        EXPECT_EQ(window.txtMax()->itemText(i - 1).toStdString(), std::to_string(i));
    }
    EXPECT_EQ(window.txtMax()->currentText().toStdString(), "4");
    // A status text long enough to reach the "Data In" column ends under it.
    const QPoint underDataIn(window.picture(3)->x() + 3, window.l(1)->y() + 2);
    EXPECT_EQ(window.picture(1)->childAt(underDataIn), window.picture(3));
    window.hide();
}

TEST_F(UiTest, QueueDoubleClickOpensTheEntryAsAnAddress) {
    const std::pair<std::string, std::string> cases[] = {
        {"HTTP://Site.com/c ", "HTTP://Site.com/c "},  // already has it: used as it stands
        {"  site.com/d  ", "http://site.com/d"},       // otherwise trimmed first
        {"https://x.com/", "http://https://x.com/"},
    };
    for (const auto& [entry, address] : cases) {
        state.List1.AddItem(entry);
        window.list1()->setCurrentIndex(
            window.list1()->model()->index(state.List1.ListCount() - 1, 0));
        window.List1_DblClick();
        EXPECT_EQ(shell.addresses.back(), address);
    }
    window.list1()->clearSelection();  // nothing selected: the bare scheme
    window.List1_DblClick();
    EXPECT_EQ(shell.addresses.back(), "http://");
}

TEST_F(UiTest, MenusAndButtonsReachTheirActionsAndClosingAsksFirst) {
    vars.TargetFolder = "C:\\Websites\\";
    window.mnuexplore_Click();
    window.command(4)->click();
    EXPECT_EQ(shell.folders, (std::vector<std::string>{"C:\\Websites\\", "C:\\Websites\\"}));
    window.command(3)->click();
    EXPECT_EQ(filterDialogs, 1);

    window.show();
    dialogs.answers = {kAnswerNo};
    EXPECT_FALSE(window.close());
    // Answered later: No keeps the window and asks nothing more; Yes closes it.
    dialogs.holdAnswers = true;
    for (const int answer : {kAnswerNo, kAnswerYes}) {
        window.mnuexit_Click();
        EXPECT_TRUE(window.isVisible());
        dialogs.held.back()(answer);
    }
    EXPECT_EQ(dialogs.held.size(), 2u);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(StartsWith(dialogs.asked.at(1), "Exit Vantorin 68: "));
}

TEST_F(UiTest, EnterStartsAndStopOrANewSiteAskFirst) {
    window.mnunew_Click();  // no crawl: the wizard, no question
    window.mnupref_Click();
    EXPECT_EQ(wizards, 2);
    Type(window.text1(), Qt::Key_A, QStringLiteral("a"));  // not Enter: nothing starts
    EXPECT_TRUE(window.command(1)->isEnabled());
    window.text1()->setText("example.com");
    emit window.text1()->textEdited("example.com");
    Type(window.text1(), Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_FALSE(window.command(1)->isEnabled());
    EXPECT_EQ(Caption(window.l(1)), "Connecting to www.example.com");
    EXPECT_EQ(window.text1()->text(), "www.example.com");  // cleaned by the start
    window.Text1_GotFocus();
    EXPECT_EQ(window.text1()->selectedText(), "www.example.com");

    dialogs.answers = {kAnswerNo, kAnswerNo};  // Stop, then New Site, answered No
    window.command(2)->click();
    window.mnunew_Click();
    EXPECT_EQ(wizards, 2);
    EXPECT_EQ(dialogs.asked.size(), 2u);
    EXPECT_FALSE(window.command(1)->isEnabled());
}

TEST_F(UiTest, ConnectionsCountTypedAndChosen) {
    Type(window.txtMax()->lineEdit(), Qt::Key_Backspace, {});  // emptied: refused
    EXPECT_EQ(window.txtMax()->currentText().toStdString(), "4");
    ASSERT_EQ(dialogs.asked.size(), 1u);
    EXPECT_EQ(dialogs.asked[0], "Try Again 16: Must be a number of connections from 1 to 24");

    state.SetRowStatus(5, "Downloading www.a.com/x");
    state.SetRowReceived(5, "1.95 KB");
    window.txtMax()->setCurrentIndex(1);
    emit window.txtMax()->activated(1);  // "2" chosen from the list
    EXPECT_EQ(state.txtMax(), "2");
    EXPECT_EQ(Caption(window.l(5)), "Not Connected.");
    EXPECT_EQ(Caption(window.k2(5)), "-");
}

TEST_F(UiTest, ActivationShowsTheWizardOnceAndReloadStartsOverFromTheDesign) {
    state.Stopping = true;
    window.Form_Activate();
    window.Form_Activate();
    EXPECT_EQ(wizards, 1);
    EXPECT_FALSE(state.Stopping);

    state.List1.AddItem("www.a.com/1");
    state.SetTxtMax("9");
    engine.tmrOut(2).SetInterval(5000);
    state.TotalBytes = 77;
    state.Stopping = true;
    window.ReloadWindow();
    EXPECT_TRUE(dialogs.asked.empty());  // the unload asks nothing while stopping
    EXPECT_EQ(window.findChildren<QLabel*>("l24").size(), 1);  // the old rows are gone
    EXPECT_EQ(window.list1()->model()->rowCount(), 0);
    EXPECT_EQ(window.txtMax()->currentText().toStdString(), "4");
    EXPECT_EQ(engine.tmrOut(2).Interval(), kDefaultTimeoutMs);
    EXPECT_EQ(state.TotalBytes, 0);
    window.Form_Activate();
    EXPECT_EQ(wizards, 2);
    window.hide();
}

TEST_F(UiTest, PauseStopsTheTickUntilThePauseDialogClosesAnyWay) {
    FakeTimer& tick = *timers.at(kSlotCount);
    for (const int way : {0, 1, 2}) {  // its button, the window frame, Escape
        tick.SetEnabled(true);
        window.mnupause_Click();  // returns with the dialog open
        QPointer<QDialog> pause = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_FALSE(pause.isNull());
        EXPECT_EQ(pause->windowTitle(), "Paused");
        QStringList captions;
        for (const QLabel* label : pause->findChildren<QLabel*>())
            captions << label->text() + " " + label->font().family() +
                            (label->font().bold() ? " bold" : "");
        EXPECT_EQ(captions, (QStringList{"Download Paused Verdana bold",
                                         "No new files will start downloading while program "
                                         "is paused. Verdana"}));
        EXPECT_EQ(pause->windowModality(), Qt::ApplicationModal);
        EXPECT_FALSE(tick.Enabled()) << way;
        if (way == 0) pause->findChild<QPushButton*>()->click();
        if (way == 1) pause->close();
        if (way == 2) pause->reject();
        EXPECT_TRUE(tick.Enabled()) << way;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(pause.isNull()) << way;
    }
}

// The stop question waits for its answer while the crawl goes on: a crawl
// that completes meanwhile ends as designed ("Done." asked, the rows and
// buttons idle), and the answer then runs its own steps: Yes stops and
// reloads; a New Site answered No still opens the wizard, since no crawl runs
// any more.
TEST_F(UiTest, ACrawlCompletingDuringTheStopQuestionEndsAndTheAnswerFollows) {
    struct Case {
        void (frmMain::*click)();
        int answer;
        const char* label6;
        int wizards;
    };
    const Case cases[] = {{&frmMain::Command2_Click, kAnswerYes, "Operation Cancelled.", 0},
                          {&frmMain::mnunew_Click, kAnswerNo, "Website Downloaded!", 1},
                          {&frmMain::mnupref_Click, kAnswerYes, "Operation Cancelled.", 1}};
    for (const Case& c : cases) {
        wizards = 0;
        dialogs.held.clear();
        state.SetText1("a.test");
        window.Command1_Click();
        sockets[0]->Accept();
        dialogs.holdAnswers = true;
        (window.*c.click)();
        dialogs.holdAnswers = false;
        ASSERT_EQ(dialogs.held.size(), 1u);
        EXPECT_EQ(dialogs.asked.back(),
                  "Stop Download 68: Are you sure you want to cancel downloading the current "
                  "website?");

        dialogs.answers = {kAnswerNo};
        sockets[0]->Receive("H\r\n\r\nthe last page", true);
        EXPECT_TRUE(StartsWith(dialogs.asked.back(), "Done. 68: The website has been downloaded."));
        EXPECT_TRUE(window.command(1)->isEnabled());
        EXPECT_FALSE(window.command(2)->isEnabled());
        EXPECT_EQ(Caption(window.l(1)), "Not Connected.");
        EXPECT_EQ(Caption(window.label(6)), "Website Downloaded!");
        EXPECT_EQ(wizards, 0);

        dialogs.held.front()(c.answer);
        const bool stopped = c.answer == kAnswerYes;
        EXPECT_EQ(Caption(window.label(6)), c.label6);
        EXPECT_EQ(state.Stopping, stopped);
        EXPECT_EQ(window.mnupause()->isEnabled(), !stopped);
        EXPECT_EQ(wizards, c.wizards);
        state.Stopping = false;
    }
    window.hide();
}

// The main window over the real message boxes, with an engine whose yields
// run the event loop as the program's do; `duringYield` runs before each.
struct LiveWindow {
    LiveWindow() {
        vars.TargetFolder = dir.Backslashed() + "site\\";
        fs.CreateFolder(vars.TargetFolder);
    }
    TempDir dir;
    CrawlVariables vars;
    FileSystem fs{vars.TargetFolder, dir.Backslashed()};
    QtDialogs dialogs;
    RecordingShell shell;
    std::vector<FakeSocket*> sockets;
    std::vector<FakeTimer*> timers;
    std::function<void()> duringYield = [] {};
    CrawlEngine engine{vars,
                       fs,
                       {dialogs, shell, PageTextReader(),
                        [this] {
                            duringYield();
                            QCoreApplication::processEvents();
                        },
                        RecordingSockets(sockets), RecordingTimers(timers)}};
    frmMain window{engine, vars, dialogs, shell};
};

// A click handled while a finished job is being scanned (its row empty, as
// designed for the scan) opens its dialog without waiting in it: the job
// ends beneath the open dialog and its row shows it, instead of staying
// empty, its socket held, until the dialog is closed.
TEST(MainWindowDialogs, AJobBeingScannedFinishesWhileADialogItsClickOpenedStays) {
    const std::pair<const char*, std::function<void(frmMain&)>> clicks[] = {
        {"pause", [](frmMain& w) { w.mnupause()->trigger(); }},
        {"stop", [](frmMain& w) { w.command(2)->click(); }},
        {"about", [](frmMain& w) { w.mnuabout_Click(); }},
        {"exit", [](frmMain& w) { w.close(); }},
        {"connections typed", [](frmMain& w) { QTest::keyClick(w.txtMax()->lineEdit(), 'x'); }}};
    for (const auto& [name, click] : clicks) {
        LiveWindow w;
        CrawlState& state = w.engine.State();
        state.SetText1("a.test");
        w.window.Command1_Click();
        state.List1.AddItem("www.a.test/later.htm");  // the crawl goes on after this job
        w.sockets[0]->Accept();
        bool clicked = false;
        w.duringYield = [&] {
            if (!clicked && state.Row(1).Status.empty()) {
                clicked = true;
                click(w.window);
            }
        };
        std::string rowWhileOpen;
        bool looked = false;
        QTimer::singleShot(100, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            rowWhileOpen = dialog ? state.Row(1).Status : "no dialog";
            if (dialog) dialog->close();
            looked = true;
        });
        w.sockets[0]->Receive("H\r\n\r\n<a href='x.htm'>", true);
        ASSERT_TRUE(QTest::qWaitFor([&] { return looked; })) << name;
        EXPECT_TRUE(clicked) << name;
        EXPECT_EQ(rowWhileOpen, "Downloading www.a.test") << name;
        EXPECT_EQ(w.sockets[0]->state, kSockClosed) << name;
    }
}

}  // namespace
}  // namespace vantorin::testing

#include "ui/frmMain.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>

#include "tests/ui/UiFixture.h"

namespace vantorin::testing {
namespace {

std::string Caption(const QLabel* label) {
    return label->text().toStdString();
}

// A key typed into a widget, as the keyboard delivers it.
void Type(QWidget* widget, Qt::Key key, const QString& text = QString()) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(widget, &press);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(widget, &release);
}

TEST_F(UiTest, CaptionsAndLabelFace) {
    EXPECT_EQ(window.windowTitle().toStdString(), "Vantorin Website Downloader 1.9");
    const std::vector<std::pair<int, std::string>> captions = {
        {1, "Queued"},  {2, "Downloaded"},     {3, "0 Files"},      {4, "0 Bytes"},
        {5, "0 Files"}, {6, "Not Connected."}, {8, "Queued Files"}, {9, "How many connections?"}};
    for (const auto& [n, caption] : captions) {
        EXPECT_EQ(Caption(window.label(n)), caption) << "Label" << n;
        EXPECT_EQ(window.label(n)->font().family().toStdString(), "Verdana") << "Label" << n;
    }
    QStringList headings;
    for (const QLabel* label : window.picture(1)->findChildren<QLabel*>())
        if (!label->isHidden() && label->objectName().endsWith(QStringLiteral("Heading")))
            headings << label->text();
    headings.sort();
    EXPECT_EQ(headings, (QStringList{"Connections", "Data In"}));
    // Picture3 lies inside the connection panel, at its right edge.
    EXPECT_EQ(window.picture(3)->parentWidget(), window.picture(1));
    EXPECT_EQ(window.picture(3)->geometry().right(), window.picture(1)->width() - 1);
    // The designed idle state.
    EXPECT_TRUE(window.command(1)->isEnabled());
    EXPECT_FALSE(window.command(2)->isEnabled());
    EXPECT_FALSE(window.mnupause()->isEnabled());
}

TEST_F(UiTest, MenuNamesAndCaptionsInOrder) {
    std::vector<std::string> seen;
    for (QAction* top : window.menuBar()->actions()) {
        seen.push_back(top->objectName().toStdString() + "=" + top->text().toStdString());
        for (QAction* item : top->menu()->actions())
            seen.push_back(item->isSeparator() ? std::string("-")
                                               : item->objectName().toStdString() + "=" +
                                                     item->text().toStdString());
    }
    const std::vector<std::string> expected = {"mnufile=&File",
                                               "mnunew=&New Site",
                                               "-",
                                               "mnuexit=&Exit Vantorin",
                                               "mnusites=&Sites",
                                               "mnupause=Pause Download",
                                               "-",
                                               "mnuexplore=&Explore...",
                                               "-",
                                               "mnupref=&Preferences...",
                                               "mnuhelp=&Help",
                                               "mnuabout=&About"};
    EXPECT_EQ(seen, expected);
}

TEST_F(UiTest, LoadMakesTwentyFourRowsAndTheConnectionsList) {
    for (int i = 1; i <= kRowCount; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(Caption(window.l(i)), "Not Connected.");
        EXPECT_EQ(Caption(window.x(i)), std::to_string(i));
        EXPECT_FALSE(window.l(i)->isHidden());
        EXPECT_FALSE(window.x(i)->isHidden());
        EXPECT_FALSE(window.k2(i)->isHidden());
        EXPECT_TRUE(window.k(i)->isHidden());  // the size label is never shown
        // Each row stands right below the one before it; its labels share the top.
        EXPECT_EQ(window.l(i)->y(), window.l(i - 1)->y() + window.l(i - 1)->height());
        EXPECT_EQ(window.x(i)->y(), window.l(i)->y());
        EXPECT_EQ(window.k2(i)->y(), window.l(i)->y());
        EXPECT_EQ(window.txtMax()->itemText(i - 1).toStdString(), std::to_string(i));
    }
    EXPECT_EQ(window.txtMax()->count(), kRowCount);
    EXPECT_EQ(window.TxtMax(), "4");
    // A status text long enough to reach the "Data In" column ends under it.
    const QPoint underDataIn(window.picture(3)->x() + 3, window.l(1)->y() + 2);
    EXPECT_EQ(window.picture(1)->childAt(underDataIn), window.picture(3));
    // The rest of the load: filters read, dldata made, the wizard due.
    EXPECT_EQ(vars.KeywordFilters[1], "ads");
    EXPECT_EQ(vars.KeywordFilters[2], "track");
    EXPECT_TRUE(NativeExists(dir.NativePath("prog/dldata")));
    EXPECT_TRUE(window.ShowWizardOnActivate);
}

TEST_F(UiTest, FirstActivationShowsTheWizardOnceAndClearsStopping) {
    engine.Stopping = true;
    window.Form_Activate();
    window.Form_Activate();
    EXPECT_EQ(wizards, 1);
    EXPECT_FALSE(window.ShowWizardOnActivate);
    EXPECT_FALSE(engine.Stopping);
}

TEST_F(UiTest, QueueDoubleClickOpensTheEntryAsAnAddress) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"www.site.com/a", "http://www.site.com/a"},
        {"http://www.site.com/b", "http://www.site.com/b"},
        {"HTTP://Site.com/c ", "HTTP://Site.com/c "},  // already has it: used as it stands
        {"  site.com/d  ", "http://site.com/d"},       // otherwise trimmed first
        {"https://x.com/", "http://https://x.com/"},
    };
    for (const auto& [entry, address] : cases) window.List1().AddItem(entry);
    for (int row = 0; row < static_cast<int>(cases.size()); ++row) {
        const QModelIndex index = window.list1()->model()->index(row, 0);
        window.list1()->setCurrentIndex(index);
        window.List1_DblClick();
    }
    ASSERT_EQ(shell.addresses.size(), cases.size());
    for (std::size_t i = 0; i < cases.size(); ++i) EXPECT_EQ(shell.addresses[i], cases[i].second);

    // Nothing selected: the bare scheme, which opens nothing useful.
    window.list1()->clearSelection();
    window.List1_DblClick();
    EXPECT_EQ(shell.addresses.back(), "http://");
}

TEST_F(UiTest, AboutAndExploreAndFilters) {
    window.mnuabout_Click();
    ASSERT_EQ(dialogs.asked.size(), 1u);
    EXPECT_EQ(dialogs.asked[0].text, "Vantorin Website Downloader 1.9");
    EXPECT_EQ(dialogs.asked[0].title, "About");
    EXPECT_EQ(dialogs.asked[0].style, 64);

    vars.TargetFolder = "C:\\Websites\\";
    window.mnuexplore_Click();
    window.command(4)->click();
    EXPECT_EQ(shell.folders, (std::vector<std::string>{"C:\\Websites\\", "C:\\Websites\\"}));

    window.command(3)->click();
    EXPECT_EQ(filterDialogs, 1);
}

TEST_F(UiTest, Text1SelectsAllWhenFocused) {
    window.SetText1("www.example.com");
    window.text1()->setCursorPosition(3);
    window.Text1_GotFocus();
    EXPECT_EQ(window.text1()->selectedText().toStdString(), "www.example.com");
    EXPECT_EQ(window.text1()->selectionStart(), 0);
}

TEST_F(UiTest, ButtonsAndEnterDriveTheEngine) {
    window.SetText1("  HTTP://Example.com/a ");
    Type(window.text1(), Qt::Key_A, QStringLiteral("a"));  // not Enter: nothing starts
    EXPECT_TRUE(window.Command1Enabled());
    window.SetText1("example.com");
    Type(window.text1(), Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_FALSE(window.Command1Enabled());
    EXPECT_TRUE(window.command(2)->isEnabled());
    EXPECT_FALSE(window.text1()->isEnabled());
    EXPECT_TRUE(window.mnupause()->isEnabled());
    EXPECT_EQ(Caption(window.label(6)), "Downloading Site [www.example.com]");
    EXPECT_EQ(Caption(window.l(1)), "Connecting to www.example.com");
    ASSERT_EQ(sock(1).connects.size(), 1u);

    // Stop, answered No: the crawl goes on. Yes: stopped, window reloaded.
    dialogs.answers = {kAnswerNo};
    window.command(2)->click();
    EXPECT_FALSE(window.Command1Enabled());
    dialogs.answers = {kAnswerYes};
    window.command(2)->click();
    EXPECT_TRUE(window.Command1Enabled());
    EXPECT_EQ(Caption(window.label(6)), "Operation Cancelled.");
    EXPECT_FALSE(window.mnupause()->isEnabled());
    EXPECT_EQ(window.Text1(), "");  // reloaded from scratch
    EXPECT_TRUE(window.ShowWizardOnActivate);
    EXPECT_EQ(ends, 0);
}

TEST_F(UiTest, ConnectionsCountTypedAndChosen) {
    // Emptying the box is a typed change too, refused like any non-number.
    Type(window.txtMax()->lineEdit(), Qt::Key_Backspace);
    EXPECT_EQ(window.TxtMax(), "4");
    ASSERT_EQ(dialogs.asked.size(), 1u);
    window.txtMax()->lineEdit()->selectAll();
    Type(window.txtMax()->lineEdit(), Qt::Key_2, QStringLiteral("2"));
    EXPECT_EQ(window.TxtMax(), "2");
    EXPECT_EQ(dialogs.asked.size(), 1u);
    Type(window.txtMax()->lineEdit(), Qt::Key_4, QStringLiteral("4"));
    EXPECT_EQ(window.TxtMax(), "4");  // 24 typed is refused
    ASSERT_EQ(dialogs.asked.size(), 2u);
    EXPECT_EQ(dialogs.asked.back().title, "Try Again");

    window.SetRowStatus(5, "Downloading www.a.com/x");
    window.SetRowReceived(5, "1.95 KB");
    window.txtMax()->setCurrentIndex(1);
    emit window.txtMax()->activated(1);  // "2" chosen from the list
    EXPECT_EQ(window.TxtMax(), "2");
    EXPECT_EQ(Caption(window.l(5)), "Not Connected.");
    EXPECT_EQ(Caption(window.k2(5)), "-");
}

TEST_F(UiTest, ReloadStartsOverFromTheDesign) {
    window.List1().AddItem("www.a.com/1");
    window.SetRowStatus(3, "Downloading www.a.com/3");
    window.SetTxtMax("9");
    window.SetLabel5("1 Files");
    engine.tmrOut(2).SetInterval(5000);
    engine.TotalBytes = 77;
    window.Form_Activate();
    ASSERT_FALSE(window.ShowWizardOnActivate);

    engine.Stopping = true;
    window.ReloadWindow();
    EXPECT_TRUE(dialogs.asked.empty());  // the unload asks nothing while stopping
    EXPECT_EQ(window.List1().ListCount(), 0);
    EXPECT_EQ(Caption(window.l(3)), "Not Connected.");
    EXPECT_EQ(window.TxtMax(), "4");
    EXPECT_EQ(window.txtMax()->count(), kRowCount);
    EXPECT_EQ(Caption(window.label(5)), "0 Files");
    EXPECT_EQ(engine.tmrOut(2).Interval(), kDefaultTimeoutMs);
    EXPECT_EQ(engine.TotalBytes, 0);
    EXPECT_TRUE(window.ShowWizardOnActivate);
    window.Form_Activate();
    EXPECT_EQ(wizards, 2);
    window.hide();
}

TEST_F(UiTest, NewSiteAndPreferencesOpenTheWizardOnlyWhenNoCrawlRuns) {
    window.mnunew_Click();
    window.mnupref_Click();
    EXPECT_EQ(wizards, 2);
    EXPECT_TRUE(dialogs.asked.empty());

    window.SetText1("www.example.com");
    window.Command1_Click();
    dialogs.answers = {kAnswerNo};  // keep downloading: no wizard
    window.mnunew_Click();
    EXPECT_EQ(wizards, 2);
    EXPECT_EQ(dialogs.asked.back().title, "Stop Download");
    EXPECT_FALSE(window.Command1Enabled());

    dialogs.answers = {kAnswerYes};  // stopped: the wizard follows
    window.mnupref_Click();
    EXPECT_EQ(wizards, 3);
    EXPECT_TRUE(window.Command1Enabled());
    window.hide();
}

TEST_F(UiTest, ClosingTheWindowAsksAndEndsOnlyOnYes) {
    window.show();
    dialogs.answers = {kAnswerNo};
    EXPECT_FALSE(window.close());
    EXPECT_EQ(ends, 0);
    EXPECT_EQ(dialogs.asked.back().title, "Exit Vantorin");
    dialogs.answers = {kAnswerYes};
    window.mnuexit_Click();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(ends, 1);
}

TEST_F(UiTest, PauseStopsTheTickUntilThePauseDialogCloses) {
    move().SetEnabled(true);
    bool tickDuringPause = true;
    QString caption;
    QTimer::singleShot(0, [&] {
        QWidget* pause = QApplication::activeModalWidget();
        ASSERT_NE(pause, nullptr);
        caption = pause->windowTitle();
        tickDuringPause = move().Enabled();
        pause->close();  // the window frame's close, not the button
    });
    window.mnupause_Click();
    EXPECT_EQ(caption.toStdString(), "Paused");
    EXPECT_FALSE(tickDuringPause);
    EXPECT_TRUE(move().Enabled());
}

TEST_F(UiTest, WizardHostSetsTheTimeoutTimersWithinWhatTheyHold) {
    EXPECT_TRUE(window.SetTmrOutInterval(1, 12000));
    EXPECT_EQ(window.TmrOutInterval(1), 12000);
    EXPECT_TRUE(window.SetTmrOutInterval(24, 0));
    EXPECT_EQ(engine.tmrOut(24).Interval(), 0);
    EXPECT_FALSE(window.SetTmrOutInterval(2, -1));
    EXPECT_FALSE(window.SetTmrOutInterval(3, 1LL << 40));
    EXPECT_EQ(window.TmrOutInterval(2), kDefaultTimeoutMs);
    EXPECT_EQ(window.TmrOutInterval(3), kDefaultTimeoutMs);
}

}  // namespace
}  // namespace vantorin::testing

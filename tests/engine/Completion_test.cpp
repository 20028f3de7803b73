#include <gtest/gtest.h>

#include <algorithm>

#include "EngineDoubles.h"

namespace vantorin::testing {
namespace {

using Completion = EngineTest;

TEST_F(Completion, SilentServerIsTriedThreeTimesThenGivenUp) {
    Start("www.a.test/slow.htm");
    sock(1).Accept();
    sock(1).Receive("partial");
    for (int attempt = 1; attempt <= 3; ++attempt) {
        SCOPED_TRACE(attempt);
        window.status[1] = window.size[1] = window.received[1] = "?";
        out(1).Fire();
        EXPECT_EQ(engine.FilesDone, attempt);  // the timeout text is saved each time
        EXPECT_EQ(window.size[1], "0 KB");
        EXPECT_EQ(window.received[1], "-");
        if (attempt < 3) {
            EXPECT_EQ(engine.Slot(1).Response, "partial");  // kept in front of the next try
        }
        EXPECT_EQ(engine.Slot(1).BytesReceived, 7);
        EXPECT_EQ(engine.Slot(1).Attempts, std::min(attempt + 1, 3));
        EXPECT_EQ(sock(1).connects.size(), static_cast<std::size_t>(std::min(attempt + 1, 3)));
        EXPECT_EQ(window.status[1], attempt < 3 ? "Connecting to www.a.test" : "Not Connected.");
    }
    EXPECT_EQ(sock(1).state, kSockClosed);
    // Queue empty and every socket closed: the third timeout completes the site.
    EXPECT_TRUE(window.command1);
    EXPECT_EQ(window.label6, "Website Downloaded!");
    EXPECT_TRUE(shell.folders.empty());  // the question was answered No
}

TEST_F(Completion, GiveUpWithWorkLeftDoesNotComplete) {
    Start("www.a.test/slow.htm");
    engine.Slot(1).Attempts = 3;
    window.list1.AddItem("www.a.test/next.htm");
    out(1).Fire();
    EXPECT_FALSE(window.command1);
    EXPECT_EQ(sock(1).connects.size(), 1u);
}

TEST_F(Completion, StopQuestionNoLeavesTheCrawlAndYesTearsItDown) {
    Start("www.a.test/x.htm");
    window.list1.AddItem("www.a.test/q.htm");
    sock(1).Accept();

    dialogs.answers = {kAnswerNo};
    engine.AskStop();
    ASSERT_EQ(dialogs.asked.size(), 1u);
    EXPECT_EQ(dialogs.asked[0].text,
              "Are you sure you want to cancel downloading the current website?");
    EXPECT_EQ(dialogs.asked[0].title, "Stop Download");
    EXPECT_EQ(dialogs.asked[0].style, 68);
    EXPECT_FALSE(window.command1);
    EXPECT_EQ(sock(1).state, kSockConnected);
    EXPECT_TRUE(move().enabled);
    EXPECT_EQ(window.list1.ListCount(), 1);

    dialogs.answers = {kAnswerYes};
    engine.Slot(1).BytesReceived = 12;
    engine.AskStop();
    EXPECT_TRUE(window.command1);
    EXPECT_FALSE(window.command2);
    EXPECT_TRUE(window.text1Enabled);
    EXPECT_GE(window.focusText1, 1);
    EXPECT_FALSE(move().enabled);
    EXPECT_EQ(window.list1.ListCount(), 0);
    for (int i = 1; i <= kSlotCount; ++i) {
        EXPECT_EQ(sock(i).state, kSockClosed);
        EXPECT_FALSE(out(i).enabled);
        EXPECT_EQ(window.status[i], "Not Connected.");
    }
    EXPECT_EQ(engine.Slot(1).Url, "");
    EXPECT_EQ(engine.Slot(1).Response, "");
    EXPECT_EQ(engine.Slot(1).BytesReceived, 12);  // numbers are left as they are
    EXPECT_TRUE(engine.Stopping);
    EXPECT_EQ(window.reloads, 1);
    EXPECT_EQ(window.label6, "Operation Cancelled.");
    EXPECT_FALSE(window.pause);
    // The reloaded window's unload asks nothing.
    dialogs.asked.clear();
    EXPECT_TRUE(engine.ExitRequested());
    EXPECT_TRUE(dialogs.asked.empty());
    EXPECT_EQ(window.ends, 0);
}

TEST_F(Completion, PauseOnlyHoldsBackNewConnections) {
    Start("www.a.test/x.htm");
    sock(1).Accept();
    engine.PauseBegin();
    EXPECT_FALSE(move().enabled);
    Finish(1);  // a running connection still completes while paused
    EXPECT_EQ(engine.FilesDone, 1);
    engine.PauseEnd();
    EXPECT_TRUE(move().enabled);
}

TEST_F(Completion, ExitAsksUnlessStoppingAndStopsARunningCrawl) {
    Start("www.a.test/x.htm");
    dialogs.answers = {kAnswerNo};
    EXPECT_FALSE(engine.ExitRequested());
    EXPECT_EQ(dialogs.asked.back().text, "Are you sure you want to exit?");
    EXPECT_EQ(dialogs.asked.back().title, "Exit Vantorin");
    EXPECT_EQ(dialogs.asked.back().style, 68);
    EXPECT_FALSE(window.command1);
    EXPECT_EQ(sock(1).state, kSockConnecting);

    dialogs.answers = {kAnswerYes};
    EXPECT_TRUE(engine.ExitRequested());
    EXPECT_TRUE(window.command1);
    EXPECT_EQ(sock(1).state, kSockClosed);
    EXPECT_FALSE(move().enabled);
    EXPECT_EQ(window.ends, 1);
}

TEST_F(Completion, SiteCompleteDoesNothingWhenIdle) {
    engine.SiteComplete();
    EXPECT_TRUE(dialogs.asked.empty());
    EXPECT_EQ(window.label6, "");
    EXPECT_TRUE(shell.folders.empty());
}

TEST_F(Completion, CountersAreShownGroupedInThrees) {
    Start("www.a.test");
    for (int i = 0; i < 3; ++i) window.list1.AddItem("www.a.test/" + std::to_string(i));
    engine.FilesDone = 1234;
    engine.TotalBytes = 1234567;
    engine.UpdateStats();
    EXPECT_EQ(window.label5, "3 Files");
    EXPECT_EQ(window.label3, "1,234 Files");
    EXPECT_EQ(window.label4, "1,234,567 Bytes");
}

TEST_F(Completion, WizardTimeoutReachesEverySlotTimer) {
    for (int i = 1; i <= kSlotCount; ++i) EXPECT_EQ(engine.TimeoutInterval(i), 20000);
    engine.SetTimeoutInterval(5, 12000);
    EXPECT_EQ(out(5).interval, 12000);
    EXPECT_EQ(engine.TimeoutInterval(5), 12000);
}

}  // namespace
}  // namespace vantorin::testing

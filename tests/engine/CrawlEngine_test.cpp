#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <limits>
#include <set>
#include <tuple>
#include <utility>

#include "tests/support/EngineWorld.h"

namespace vantorin::testing {
namespace {

// The engine world with its doubles by number, a start as the start button
// makes it, and the outcomes the engine reported.
class EngineTest : public ::testing::Test, public EngineWorld<> {
protected:
    EngineTest() {
        engine.onOutcome = [this](CrawlOutcome outcome) { outcomes.push_back(outcome); };
    }
    FakeSocket& sock(int n) { return *sockets.at(static_cast<std::size_t>(n - 1)); }
    FakeTimer& out(int n) { return *timers.at(static_cast<std::size_t>(n - 1)); }
    FakeTimer& move() { return *timers.at(kSlotCount); }
    void Start(const std::string& address) {
        state.SetText1(address);
        engine.ConnectNowNow();
    }
    std::vector<CrawlOutcome> outcomes;
};

TEST_F(EngineTest, StartCleansTheAddress) {
    // Typed, Text1, SiteHost.
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"  HTTP://Example.com/a  ", "www.Example.com/a", "Example.com"},
        {"example.com/www.x", "example.com/www.x", "example.com"},  // "www." anywhere counts
        {"WWW.Site.org", "WWW.Site.org", "WWW.Site.org"},
        {"", "www.", ""},
    };
    for (const auto& [typed, text1, siteHost] : cases) {
        engine.StopNOW();
        vars.MadeFolders = vars.LastSearchPage = "the last crawl's";
        Start(typed);
        EXPECT_EQ(state.Text1(), text1) << typed;
        EXPECT_EQ(vars.SiteHost, siteHost) << typed;
        EXPECT_EQ(vars.MadeFolders + vars.LastSearchPage, "") << typed;
    }
}

TEST_F(EngineTest, SchedulerFillsOnlyTheFirstNSlots) {
    engine.ConnectNext("www.a.test/y");  // no crawl running: nothing starts
    EXPECT_TRUE(sock(1).connects.empty());
    state.TotalBytes = state.FilesDone = 5;
    Start("www.a.test");  // slot 1 busy with the start page, which skips the queue
    EXPECT_EQ(state.TotalBytes + state.FilesDone, 0);
    state.FilesDone = 1234;
    state.TotalBytes = 56789;
    for (const char* item : {"www.a.test/1", "www.a.test/2", "www.a.test/3"})
        state.List1.AddItem(item);
    state.SetTxtMax("2");
    for (int tick = 0; tick < 2; ++tick) engine.tmrMove_Timer();
    // Slots 1-2 busy: the queue waits, though slot 3 is closed.
    EXPECT_EQ(engine.Slot(2).Url, "www.a.test/3");
    EXPECT_EQ(state.Row(2).Status, "Connecting to www.a.test");
    EXPECT_EQ(state.List1.ListCount(), 2);
    EXPECT_EQ(state.Label5() + state.Label3() + state.Label4(), "2 Files1,234 Files56,789 Bytes");
    sock(2).Close();  // a socket that closes frees its slot on the next tick
    engine.tmrMove_Timer();
    EXPECT_EQ(engine.Slot(2).Url, "www.a.test/2");
    state.SetTxtMax("2.5");  // rounded half to even: slot 3 stays above N
    EXPECT_EQ(engine.FindFreeSlot(), 0);
}

TEST_F(EngineTest, ShapesAndRefusesRequests) {
    const std::string tail(1200, 'p');
    const std::string cutPath = ("/v.1/" + tail).substr(0, 999);  // cut at 999, as designed
    // Address, request line ("" if never sent).
    const std::pair<std::string, std::string> cases[] = {
        {"www.e.com/about", "GET /about/ HTTP/1.0"},
        {"www.e.com/v1.0/docs", "GET /v1.0/docs HTTP/1.0"},
        {"www.e.com/pics/cat.jpeg", "GET /pics/cat.jpg HTTP/1.0"},
        {"www.e.com\\x\\y.htm", "GET /x/y.htm HTTP/1.0"},
        {"www.e.com//a", "GET /a/ HTTP/1.0"},
        {"www.e.com:8080/x.htm", "GET /x.htm HTTP/1.0"},
        {"www.e.com/v.1/" + tail, "GET " + cutPath + " HTTP/1.0"},
        {"www.e.com/b/../x.htm", "GET /b/../x.htm HTTP/1.0"},
        {"www.e.com/../x.htm", ""},
        {"www.e.com/\\../x.htm", ""},
        {"www.e.com/..x.htm", ""},
    };
    Start("www.e.com/index.html");
    sock(1).Accept();
    EXPECT_EQ(sock(1).sent.at(0),
              "GET / HTTP/1.0\r\nHost: www.e.com\r\nReferrer: www.e.com\r\n"
              "User-Agent: Internet Explorer 6.01\r\n\r\n");
    for (const auto& [address, firstLine] : cases) {
        SCOPED_TRACE(address.substr(0, 40));
        sock(1).Close();
        sock(1).sent.clear();
        engine.ConnectNext(address);
        sock(1).Accept();
        const std::string host = address.substr(0, address.find_first_of("/\\"));
        EXPECT_EQ(sock(1).connects.back(), std::make_pair(host, 80));  // a port stays in the host
        const std::string sent = sock(1).sent.empty() ? "" : sock(1).sent.back();
        EXPECT_EQ(sent.substr(0, sent.find("\r\n")), firstLine);
        // A refused job is closed at once and ends through its timeout.
        EXPECT_EQ(engine.Slot(1).Response == "CANCEL", firstLine.empty());
        EXPECT_EQ(sock(1).state == kSockClosed, firstLine.empty());
        EXPECT_TRUE(out(1).enabled);
    }
}

// A click resets the rows above the count; a typed count from 24 up is refused.
TEST_F(EngineTest, ConnectionsCountResetsTheRowsAboveItAndRefusesFrom24Up) {
    // Typed, refused, first row a click resets (25: none).
    const std::tuple<const char*, bool, int> cases[] = {
        {"23", false, 24}, {"2", false, 3}, {"-3", false, 1}, {"24", true, 25}, {"abc", true, 25}};
    for (const auto& [typed, refused, firstReset] : cases) {
        for (int row = 1; row <= kSlotCount; ++row) state.SetRowStatus(row, "busy");
        state.SetTxtMax(typed);
        engine.txtMax_Click();
        for (int row = 1; row <= kSlotCount; ++row)
            EXPECT_EQ(state.Row(row).Status == "busy", row < firstReset) << typed << " " << row;
        engine.txtMax_Change();
        EXPECT_EQ(state.txtMax(), refused ? "4" : typed) << typed;
    }
    EXPECT_EQ(dialogs.asked.size(), 2u);
}

TEST_F(EngineTest, ReadsContentLengthOnlyFromTheTwelveCharacterWindow) {
    // Chunk, the value read (starting from 55).
    const std::pair<const char*, int> cases[] = {
        {"Content-Length: 12345678901\r\n", 0},          // window ends before the CR LF
        {"Content-Length: 9999999999\r\n", 55},          // too big for 32 bits: kept
        {"Content-Length: 2147483647\r\n", 2147483647},  // the largest that fits
        {"Content-Length:2048\r\n", 48},                 // the 16th character is skipped
        {"Content-Length: 12.5\r\n", 12},                // rounded half to even
        {"content-length: 2048\r\n", 55},                // exact case only
        {"HTTP/1.0 200 OK\r\nContent-Len", 55},          // split header is missed
    };
    Start("www.a.test");
    sock(1).Accept();
    for (const auto& [chunk, expected] : cases) {
        engine.Slot(1).ContentLength = 55;
        sock(1).Receive(chunk);
        EXPECT_EQ(engine.Slot(1).ContentLength, expected) << chunk;
    }
}

// Each chunk restarts the timeout, which measures silence.
TEST_F(EngineTest, RowShowsAJobWithinTheCountAndAJobAboveItStillEnds) {
    engine.Slot(1).BytesReceived = engine.Slot(1).ContentLength = 99;  // the slot's last job
    Start("www.a.test/p.htm");
    EXPECT_EQ(engine.Slot(1).ContentLength, 0);
    sock(1).Accept();
    const int starts = out(1).starts;
    sock(1).Receive("HTTP/1.0 200 OK\r\nContent-Length: 2048\r\n\r\n");
    EXPECT_EQ(out(1).starts, starts + 1);
    const auto row = [this] {
        return state.Row(1).Status + "|" + state.Row(1).Size + "|" + state.Row(1).Received;
    };
    EXPECT_EQ(row(), "Downloading www.a.test/p.htm|2.00 KB|41 bytes");
    state.SetTxtMax("0");  // its row is reset on every chunk
    sock(1).Receive("page");
    EXPECT_EQ(row(), "Not Connected.|0 KB|-");
    sock(1).Receive("", true);
    EXPECT_EQ(state.FilesDone, 1);
}

// A stop inside a yield leaves the slot alone; a start or the next tick
// reuses it at once.
TEST_F(EngineTest, AStopOrANewJobInsideAYieldOwnsTheSlot) {
    enum During { kStop, kStopAndStart, kTick };
    for (const During during : {kStop, kStopAndStart, kTick}) {
        Start("www.a.test/x.htm");
        sock(1).Accept();
        bool fired = false;
        duringYield = [this, during, &fired] {
            if (std::exchange(fired, true)) return;
            if (during != kTick) {
                engine.StopNOW();
                if (during == kStopAndStart) Start("www.b.test/y.htm");
                return;
            }
            sock(1).Close();
            state.List1.AddItem("www.a.test/y.htm");
            engine.tmrMove_Timer();
        };
        sock(1).Receive("HTTP/1.0 200 OK\r\n\r\nold page", true);  // the server closes
        EXPECT_EQ(state.FilesDone, 0);
        EXPECT_EQ(engine.Slot(1).Response, "");
        // The new job's socket is untouched, nor its row.
        EXPECT_EQ(sock(1).state, during == kStop ? kSockClosed : kSockConnecting);
        EXPECT_EQ(state.Row(1).Received, "-");
    }
}

// The wizard's timeout goes to every timer that takes it.
TEST_F(EngineTest, TimeoutIntervalTakesZeroToIntMaxOnSlotsOneTo24) {
    constexpr long long kIntMax = std::numeric_limits<int>::max();
    const std::tuple<int, long long, bool> cases[] = {{1, 0, true},   {24, kIntMax, true},
                                                      {1, -1, false}, {1, kIntMax + 1, false},
                                                      {0, 5, false},  {25, 5, false}};
    for (const auto& [slot, ms, taken] : cases) {
        EXPECT_EQ(engine.SetTimeoutInterval(slot, ms), taken) << slot << " " << ms;
        EXPECT_EQ(engine.TimeoutInterval(slot), taken ? ms : slot == 1 ? 15000 : 0);
        engine.SetTimeoutInterval(1, 15000);
    }
}

// The counters are 32-bit: an add that would pass the maximum is skipped
// (reaching it exactly is not), and only the counters stop.
TEST_F(EngineTest, CountersSkipAnAddThatWouldOverflow) {
    constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
    // TotalBytes and BytesReceived before a 4-byte chunk, then after it.
    const std::int32_t cases[][4] = {{kMax - 2, 10, kMax - 2, 14},
                                     {10, kMax - 2, 14, kMax - 2},
                                     {kMax - 4, kMax - 4, kMax, kMax}};
    for (const auto& [total, received, totalAfter, receivedAfter] : cases) {
        Start("www.a.test/x.htm");
        sock(1).Accept();
        state.TotalBytes = total;
        engine.Slot(1).BytesReceived = received;
        sock(1).Receive("abcd");
        EXPECT_EQ(state.TotalBytes, totalAfter) << total;
        EXPECT_EQ(engine.Slot(1).BytesReceived, receivedAfter) << received;
        EXPECT_EQ(engine.Slot(1).Response, "abcd");
    }
}

TEST_F(EngineTest, GivenUpJobCompletesTheSiteOnlyWithNoWorkLeft) {
    dialogs.answers = {kAnswerYes};
    Start("www.a.test/slow.htm");
    state.List1.AddItem("www.a.test/next.htm");
    for (int i = 0; i < 3; ++i) {
        sock(1).state = kSockError;  // refused: the slot is not free until its timeout
        EXPECT_EQ(engine.FindFreeSlot(), 2);
        state.SetRowReceived(1, "9 bytes");
        out(1).Fire();  // two more attempts, then given up
        EXPECT_EQ(state.Row(1).Received, "-");
    }
    EXPECT_EQ(sock(1).connects.size(), 3u);
    EXPECT_FALSE(state.Command1Enabled());
    EXPECT_TRUE(outcomes.empty());
    state.List1.Clear();
    out(1).Fire();
    out(1).Fire();  // a second ending asks and reports nothing more
    EXPECT_EQ(state.Label6(), "Website Downloaded!");
    EXPECT_EQ(shell.folders, std::vector<std::string>{vars.TargetFolder});
    EXPECT_EQ(outcomes, std::vector<CrawlOutcome>{CrawlOutcome::SiteComplete});
}

// The scanner consumes the slot's Response itself: a retry that a timeout
// starts during a long scan appends behind what is left of the first answer,
// so only the retry's body is saved, not both answers with a header between.
TEST_F(EngineTest, RetryDuringTheScanSavesOnlyTheRetrysBody) {
    Start("www.a.test/p.htm");
    sock(1).Accept();
    bool retried = false;
    duringYield = [this, &retried] {
        // Once the scan has reached the page's link.
        if (retried || state.List2.ListCount() == 0) return;
        retried = true;
        out(1).Fire();
        sock(1).Accept();
        sock(1).Receive("HTTP/1.0 200 OK\r\n\r\nsecond", true);
    };
    sock(1).Receive("HTTP/1.0 200 OK\r\n\r\nfirst <a href='x.htm'>", true);
    EXPECT_EQ(engine.Slot(1).Attempts, 2);
    EXPECT_EQ(ReadNativeFile(dir.NativePath("site/a.test/p.htm")), "second\r\n");
}

// What admission queues, the scheduler fetches and the save step names alike:
// each saved job deletes the placeholder its link was queued with. Kept as
// designed: ".jpeg" is fetched and saved as ".jpg", so its placeholder waits
// for the end-of-crawl sweep.
TEST_F(EngineTest, EachSavedJobDeletesThePlaceholderItsLinkWasQueuedWith) {
    WriteNativeFile(dir.NativePath("prog/temp/filetypes.txt"), ".html\r\n.jpeg\r\n");
    Start("www.a.test/");
    state.List1.AddItem("www.a.test/never.html");  // taken last, so the crawl stays on
    sock(1).Accept();
    sock(1).Receive(
        "H\r\n\r\n<a href='d/'> <a href='q.php?x=1'> <img src='p.jpeg'> "
        "<a href='b/../c.html'> <a href='n/index.html'>",
        true);
    const auto placeholders = [this] {
        std::vector<std::string> found;
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(dir.NativePath("site")))
            if (entry.path().extension() == ".tmp") found.push_back(entry.path().string());
        return found;
    };
    ASSERT_EQ(placeholders().size(), 5u);
    for (int job = 0; job < 5; ++job) {
        engine.tmrMove_Timer();
        sock(1).Accept();
        sock(1).Receive("H\r\n\r\nx", true);
    }
    EXPECT_EQ(placeholders(), std::vector<std::string>{dir.NativePath("site/a.test/p.jpeg.tmp")});
    EXPECT_TRUE(engine.Running());
    EXPECT_EQ(state.Row(1).Received, "-");  // a finished job's counts leave its row
    dialogs.answers = {kAnswerYes};
    engine.AskStop();  // a stop sweeps what is left
    EXPECT_TRUE(placeholders().empty());
}

// One end-to-end case of the guard's work (its own table is in FileSystem's
// test): a link that climbs out once "www." is cut ("..www." becomes "..")
// toward the program's own file-type list changes nothing outside the target.
TEST_F(EngineTest, AClimbingLinkNeverLeavesTheTargetFolder) {
    WriteNativeFile(dir.NativePath("prog/temp/filetypes.txt"), ".html\r\n.txt\r\n");
    const auto before = ListTreeExcept(dir.Native(), dir.NativePath("site"));
    Start("www.a.test/a.html");
    sock(1).Accept();
    sock(1).Receive("H\r\n\r\n<a href='a/..www./..www./..www./prog/temp/filetypes.txt'>", true);
    EXPECT_EQ(ListTreeExcept(dir.Native(), dir.NativePath("site")), before);
    EXPECT_TRUE(NativeExists(dir.NativePath("site/a.test/a.html")));
}

TEST_F(EngineTest, StartAndStopTellTheWindowAndStopTearsEveryJobDown) {
    std::set<StateChange> told;
    state.onChange = [&told](StateChange change, int) { told.insert(change); };
    Start("www.a.test/x.htm");
    using enum StateChange;
    EXPECT_EQ(told, (std::set{Text1, Text1Enabled, Command1, Command2, mnupause, Captions, Row}));
    EXPECT_TRUE(state.mnupauseEnabled() && !state.Text1Enabled() && move().enabled);
    state.List1.AddItem("www.a.test/q.htm");
    dialogs.answers = {kAnswerYes};
    engine.PauseBegin();
    EXPECT_FALSE(move().enabled);
    engine.PauseEnd();
    EXPECT_TRUE(move().enabled);
    told.clear();
    engine.AskStop();
    EXPECT_TRUE(told.contains(Text1Focus) && state.Text1Enabled() && state.Stopping);
    EXPECT_EQ(state.Label6(), "Operation Cancelled.");
    EXPECT_EQ(outcomes, std::vector<CrawlOutcome>{CrawlOutcome::Stopped});
    EXPECT_FALSE(move().enabled || state.mnupauseEnabled());
    EXPECT_EQ(state.List1.ListCount(), 0);
    for (int i = 1; i <= kSlotCount; ++i) {
        EXPECT_FALSE(sock(i).state || out(i).enabled) << i;
        EXPECT_EQ(state.Row(i).Status, "Not Connected.") << i;
    }
    EXPECT_EQ(engine.Slot(1).Url, "");
    sock(1).Accept();  // a connect that lands after the stop is closed unused
    EXPECT_EQ(sock(1).state, kSockClosed);
    EXPECT_TRUE(sock(1).sent.empty());
}

TEST_F(EngineTest, ExitStopsARunningCrawlUnlessAnsweredNo) {
    int ended = 0;
    engine.onEndProgram = [&ended] { ++ended; };
    for (const int answer : {kAnswerNo, kAnswerYes}) {
        Start("www.a.test/x.htm");
        dialogs.answers = {answer};
        std::vector<bool> unloads;
        engine.AskExit([&unloads](bool unload) { unloads.push_back(unload); });
        EXPECT_EQ(unloads, std::vector<bool>{answer == kAnswerYes});
        EXPECT_EQ(engine.Running(), answer == kAnswerNo);
        EXPECT_EQ(move().enabled && sock(1).state, answer == kAnswerNo);
    }
    EXPECT_EQ(ended, 1);
    engine.PauseBegin();  // resuming while idle enables the tick; exit disables it
    engine.PauseEnd();
    vars.MadeFolders = vars.TargetFolder + "made\\*";  // and sweeps what a stop left
    WriteNativeFile(dir.NativePath("site/made/q.htm.tmp"), "");
    dialogs.answers = {kAnswerYes};
    engine.AskExit([](bool) {});
    EXPECT_FALSE(move().enabled);
    EXPECT_FALSE(NativeExists(dir.NativePath("site/made/q.htm.tmp")));
    state.Stopping = true;  // the reload after a stop unloads without asking
    dialogs.asked.clear();
    engine.AskExit([&ended](bool unload) { ended += unload; });
    EXPECT_EQ(ended, 3);
    EXPECT_TRUE(dialogs.asked.empty());
}

// A reload after a crawl shows the window as designed: every caption, flag,
// row and counter fresh, the timeout timers new ones.
TEST_F(EngineTest, ReloadRestoresTheDesignedState) {
    Start("www.a.test/x.htm");
    engine.SetTimeoutInterval(3, 5000);
    sock(1).Accept();
    sock(1).Receive("H\r\n\r\n<a href='y.htm'>", true);
    engine.tmrMove_Timer();
    state.List2.AddItem("www.b.test/n.htm");
    state.SetTxtMax("7");
    engine.ResetForReload();
    EXPECT_EQ(state.List1.ListCount() + state.List2.ListCount() + state.FilesDone, 0);
    EXPECT_EQ(state.TotalBytes, 0);
    EXPECT_TRUE(state.Command1Enabled() && !state.Command2Enabled() && !state.mnupauseEnabled() &&
                state.Text1Enabled());
    EXPECT_EQ(state.Text1() + "|" + state.txtMax() + "|" + state.Label3() + "|" + state.Label4() +
                  "|" + state.Label5() + "|" + state.Label6(),
              "|4|0 Files|0 Bytes|0 Files|Not Connected.");
    EXPECT_TRUE(std::filesystem::is_directory(dir.NativePath("prog/dldata")));
    for (int i = 1; i <= kSlotCount; ++i) {
        const RowTexts& row = state.Row(i);
        EXPECT_EQ(row.Status + row.Size + row.Received, "Not Connected.0 KB-") << i;
        EXPECT_TRUE(!out(i).enabled && out(i).interval == kDefaultTimeoutMs) << i;
    }
}

}  // namespace
}  // namespace vantorin::testing

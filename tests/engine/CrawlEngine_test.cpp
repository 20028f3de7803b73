#include <gtest/gtest.h>

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

// A start cleans the address and the last crawl's leftovers and fetches the
// start page directly; each tick hands the newest queued address to the first
// free slot among the first N.
TEST_F(EngineTest, StartCleansTheAddressAndTheSchedulerFillsOnlyTheFirstNSlots) {
    vars.MadeFolders = vars.LastSearchPage = "the last crawl's";
    state.FilesDone = 1234;
    state.TotalBytes = 56789;
    Start("  HTTP://a.test/  ");
    EXPECT_EQ(state.Text1() + "|" + vars.SiteHost + vars.MadeFolders + vars.LastSearchPage,
              "www.a.test/|a.test");
    for (const char* item : {"www.a.test/1", "www.a.test/2", "www.a.test/3"})
        state.List1.AddItem(item);
    state.SetTxtMax("2");
    for (int tick = 0; tick < 2; ++tick) engine.tmrMove_Timer();
    // Slots 1-2 busy: the queue waits, though slot 3 is closed.
    EXPECT_EQ(engine.Slot(2).Url + state.Row(2).Status, "www.a.test/3Connecting to www.a.test");
    EXPECT_EQ(state.Label5() + state.Label3() + state.Label4(), "2 Files0 Files0 Bytes");
    sock(2).Close();  // a socket that closes frees its slot on the next tick
    engine.tmrMove_Timer();
    EXPECT_EQ(engine.Slot(2).Url, "www.a.test/2");
}

// A request asks for the path, a folder with a "/" added, cut at 999
// characters as designed; a climbing one is never asked for: its job is closed
// at once and ends through its timeout.
TEST_F(EngineTest, ShapesAndRefusesRequests) {
    const std::string tail(1200, 'p');
    // Address, request line.
    const std::pair<std::string, std::string> cases[] = {
        {"www.e.com/about", "GET /about/ HTTP/1.0"},
        {"www.e.com/v.1/" + tail, "GET " + ("/v.1/" + tail).substr(0, 999) + " HTTP/1.0"},
        {"www.e.com/../x.htm", "refused"},
        {"www.e.com/index.html", "GET / HTTP/1.0"},
    };
    for (const auto& [address, firstLine] : cases) {
        Start(address);
        sock(1).Accept();
        const bool refused = sock(1).state == kSockClosed && engine.Slot(1).Response == "CANCEL";
        const std::string sent = sock(1).sent.empty() ? "" : sock(1).sent.back();
        EXPECT_EQ(refused ? "refused" : sent.substr(0, sent.find("\r\n")), firstLine);
        EXPECT_TRUE(out(1).enabled);
    }
    EXPECT_EQ(sock(1).sent.back(),
              "GET / HTTP/1.0\r\nHost: www.e.com\r\nReferrer: www.e.com\r\n"
              "User-Agent: Internet Explorer 6.01\r\n\r\n");
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
}

// Each chunk restarts the timeout, which measures silence, adds to 32-bit
// counters (an add that would pass the maximum is skipped, reaching it is
// not), and shows on its row only within the connections count; the expected
// size is read from a 12-character window after "Content-Length:". A stop
// while the chunk's events run owns the slot from then on.
TEST_F(EngineTest, EachChunkCountsAndShowsOnItsRowUnlessAStopTookTheSlot) {
    ConnectionSlot& slot = engine.Slot(1);
    slot.Response = "the slot's last job";
    slot.BytesReceived = slot.ContentLength = 99;
    Start("www.a.test/p.htm");
    EXPECT_EQ(slot.Response + std::to_string(slot.ContentLength), "0");
    sock(1).Accept();
    const int starts = out(1).starts;
    sock(1).Receive("HTTP/1.0 200 OK\r\nContent-Length: 2048\r\n\r\n");
    EXPECT_EQ(out(1).starts, starts + 1);
    const RowTexts& row = state.Row(1);
    EXPECT_EQ(row.Status + "|" + row.Size + "|" + row.Received,
              "Downloading www.a.test/p.htm|2.00 KB|41 bytes");
    sock(1).Receive("Content-Length: 2147483647\r\n");  // the largest that fits
    EXPECT_EQ(slot.ContentLength, 2147483647);
    sock(1).Receive("Content-Length:2048\r\n");  // the 16th character is skipped
    EXPECT_EQ(slot.ContentLength, 48);
    constexpr std::int32_t kMax = INT32_MAX;
    state.TotalBytes = kMax - 3;
    slot.BytesReceived = kMax - 4;
    sock(1).Receive("abcd");
    EXPECT_EQ(std::pair(state.TotalBytes, slot.BytesReceived), std::pair(kMax - 3, kMax));
    state.SetTxtMax("0");  // its row is reset on every chunk
    sock(1).Receive("page");
    EXPECT_EQ(row.Status + "|" + row.Size + "|" + row.Received, "Not Connected.|0 KB|-");
    // A stop inside a yield leaves the slot alone: nothing is saved.
    duringYield = [this] { engine.StopNOW(); };
    sock(1).Receive("the last chunk", true);
    EXPECT_EQ(std::to_string(state.FilesDone) + slot.Response, "0");
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
    }
    EXPECT_EQ(std::tuple(sock(1).connects.size(), engine.Running(), outcomes.size(),
                         state.Row(1).Received),
              std::tuple(3u, true, 0u, "-"));
    state.List1.Clear();
    out(1).Fire();
    out(1).Fire();  // a second ending asks and reports nothing more
    EXPECT_EQ(std::tuple(state.Label6(), shell.folders, outcomes),
              std::tuple("Website Downloaded!", std::vector{vars.TargetFolder},
                         std::vector{CrawlOutcome::SiteComplete}));
}

// A retry that lands while the scan runs is appended behind what the scan
// left, which holds no blank line: only the retry's body is saved.
TEST_F(EngineTest, RetryDuringTheScanSavesOnlyTheRetrysBody) {
    Start("www.a.test/p.htm");
    sock(1).Accept();
    bool retried = false;
    duringYield = [this, &retried] {
        if (retried || state.List2.ListCount() == 0) return;  // the scan reached the link
        retried = true;
        out(1).Fire();
        sock(1).Accept();
        sock(1).Receive("HTTP/1.0 200 OK\r\n\r\nsecond", true);
    };
    sock(1).Receive("HTTP/1.0 200 OK\r\n\r\nfirst <a href='x.htm'>", true);
    // The finished job's socket is closed.
    EXPECT_EQ(std::tuple(engine.Slot(1).Attempts,
                         ReadNativeFile(dir.NativePath("site/a.test/p.htm")), sock(1).state),
              std::tuple(2, "second\r\n", kSockClosed));
}

// What admission queues, the scheduler fetches and the save step names alike:
// each saved job deletes the placeholder its link was queued with. Kept as
// designed: ".jpeg" is fetched and saved as ".jpg", so its placeholder waits
// for the sweep of a stop or the crawl's end. And one end-to-end case of the
// guard's work (its own table is in FileSystem's test): a link that climbs out
// once "www." is cut ("..www." becomes "..") toward the program's own
// file-type list changes nothing outside the target.
TEST_F(EngineTest, EachSavedJobDeletesThePlaceholderItsLinkWasQueuedWith) {
    WriteNativeFile(dir.NativePath("prog/temp/filetypes.txt"), ".html\r\n.jpeg\r\n.txt\r\n");
    const auto before = ListTreeExcept(dir.Native(), dir.NativePath("site"));
    Start("www.a.test/");
    state.List1.AddItem("www.a.test/never.html");  // taken last, so the crawl stays on
    sock(1).Accept();
    sock(1).Receive(
        "H\r\n\r\n<a href='d/'> <a href='q.php?x=1'> <img src='p.jpeg'> "
        "<a href='b/../c.html'> <a href='n/index.html'> <a "
        "href='a/..www./..www./..www./prog/temp/filetypes.txt'>",
        true);
    const auto placeholders = [this] {  // each as its path and size
        auto found = ListTreeExcept(dir.NativePath("site"), "");
        std::erase_if(found, [](const std::string& e) { return e.find(".tmp ") == e.npos; });
        return found;
    };
    ASSERT_EQ(placeholders().size(), 5u);
    for (int job = 0; job < 6; ++job) {
        engine.tmrMove_Timer();
        sock(1).Accept();
        sock(1).Receive("H\r\n\r\nx", true);
    }
    EXPECT_EQ(placeholders().size(), 1u);
    EXPECT_TRUE(NativeExists(dir.NativePath("site/a.test/p.jpeg.tmp")));
    dialogs.answers = {kAnswerYes};
    engine.AskStop();
    EXPECT_TRUE(placeholders().empty());
    EXPECT_EQ(ListTreeExcept(dir.Native(), dir.NativePath("site")), before);
}

// Start and stop tell the window, a pause holds the tick, a stop tears every
// job down, and exit asks first (and stops a crawl) unless a stop has just
// reloaded the window. The reload shows the window as designed: every caption,
// flag, row and counter fresh, the timeout timers new ones.
TEST_F(EngineTest, StartPauseStopExitAndReload) {
    std::string log;  // what the exit question's answers and the program's end did
    engine.onEndProgram = [&log] { log += "end "; };
    const auto exit = [this, &log](int answer) {
        dialogs.answers = {answer};
        engine.AskExit([&log](bool unload) { log += unload ? "unload " : "stay "; });
    };
    std::set<StateChange> told;
    state.onChange = [&told](StateChange change, int) { told.insert(change); };
    WriteNativeFile(dir.NativePath("prog/temp/filetypes.txt"), ".htm\r\n");
    Start("www.a.test/x.htm");
    using enum StateChange;
    EXPECT_EQ(told, (std::set{Text1, Text1Enabled, Command1, Command2, mnupause, Captions, Row}));
    EXPECT_TRUE(state.mnupauseEnabled() && !state.Text1Enabled() && move().enabled);
    engine.PauseBegin();
    EXPECT_FALSE(move().enabled);
    engine.PauseEnd();
    exit(kAnswerNo);
    EXPECT_TRUE(engine.Running() && move().enabled && sock(1).state);
    EXPECT_TRUE(engine.SetTimeoutInterval(3, 5000) && out(3).interval == 5000);
    state.SetTxtMax("7");
    sock(1).Accept();
    sock(1).Receive("H\r\n\r\n<a href='y.htm'> <a href='z.htm'>", true);
    engine.tmrMove_Timer();  // one link fetched, one left queued
    dialogs.answers = {kAnswerYes};
    engine.AskStop();
    EXPECT_TRUE(told.contains(Text1Focus) && state.Text1Enabled() && state.Stopping);
    EXPECT_EQ(state.Label6(), "Operation Cancelled.");
    EXPECT_EQ(outcomes, std::vector<CrawlOutcome>{CrawlOutcome::Stopped});
    EXPECT_FALSE(move().enabled || state.mnupauseEnabled() || state.List1.ListCount());
    for (int i = 1; i <= kSlotCount; ++i)
        EXPECT_FALSE(sock(i).state || out(i).enabled || state.Row(i).Status != "Not Connected.")
            << i;
    sock(1).Accept();  // a connect that lands after the stop is closed unused
    EXPECT_TRUE(sock(1).state == kSockClosed && sock(1).sent.size() == 1u);
    exit(kAnswerNo);  // the reload after a stop unloads without asking (or this No)
    engine.ResetForReload();
    EXPECT_EQ(state.List2.ListCount() + state.FilesDone + state.TotalBytes, 0);
    EXPECT_TRUE(state.Command1Enabled() && !state.Command2Enabled() && !state.mnupauseEnabled() &&
                state.Text1Enabled());
    EXPECT_EQ(state.Text1() + "|" + state.txtMax() + "|" + state.Label3() + "|" + state.Label4() +
                  "|" + state.Label5() + "|" + state.Label6(),
              "|4|0 Files|0 Bytes|0 Files|Not Connected.");
    EXPECT_TRUE(NativeExists(dir.NativePath("prog/dldata")));
    for (int i = 1; i <= kSlotCount; ++i) EXPECT_EQ(out(i).interval, kDefaultTimeoutMs) << i;
    state.Stopping = false;
    Start("www.a.test/x.htm");
    exit(kAnswerYes);  // stops the crawl
    EXPECT_FALSE(engine.Running() || sock(1).state);
    engine.PauseEnd();  // resuming while idle enables the tick; exit disables it
    vars.MadeFolders = vars.TargetFolder + "made\\*";  // and sweeps what a stop left
    WriteNativeFile(dir.NativePath("site/made/q.htm.tmp"), "");
    exit(kAnswerYes);
    EXPECT_FALSE(move().enabled || NativeExists(dir.NativePath("site/made/q.htm.tmp")));
    EXPECT_EQ(log, "stay unload end unload end unload ");
}

}  // namespace
}  // namespace vantorin::testing

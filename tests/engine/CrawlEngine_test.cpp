#include "engine/CrawlEngine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>
#include <utility>

#include "engine/Captions.h"
#include "tests/support/EngineWorld.h"

namespace vantorin::testing {
namespace {

// The engine world with the events it told, and a page answered on a
// connection: accepted, received with the server's close, the job run to
// its end.
class EngineTest : public ::testing::Test, public EngineWorld {
protected:
    EngineTest() {
        engine.onEvent = [this](const CrawlEvent& event) { told.push_back(event.kind); };
        WriteNativeFile(dir.NativePath("prog/temp/filetypes.txt"),
                        ".htm\r\n.html\r\n.jpeg\r\n.txt\r\n");
    }
    void Answer(int n, const std::string& page) {
        socket(n).Accept();
        socket(n).Receive("H\r\n\r\n" + page, true);
        loop.RunUntilIdle();
    }
    RowTexts Row(int n) const { return RowTextsOf(model.Row(n)); }
    std::vector<CrawlEvent::Kind> told;
    using K = CrawlEvent::Kind;
};

// A start cleans the address and fetches the start page directly; each tick
// hands the newest queued address to the first free connection among the
// first N; a ".jpeg" is fetched as ".jpg" (so its placeholder waits for the
// sweep of a stop or the crawl's end). (The counters a tick shows, the
// queue's order and a row's sizes are in the window's crawling snapshot.)
// A link that climbs out only once "www." is cut ("..www." becomes "..")
// toward the program's own file-type list changes nothing outside the target
// folder: the mirror writes through a file system that holds the target alone.
TEST_F(EngineTest, StartCleansTheAddressAndEachTickFillsTheFirstFreeOfTheFirstN) {
    Start("  HTTP://a.test/  ");
    EXPECT_EQ(model.address, "www.a.test/");  // its status line is in the crawling snapshot
    const auto outside = ListTreeExcept(dir.Native(), dir.NativePath("site"));
    engine.ChooseConnectionLimit("2");
    Answer(1,
           "<a href='a/..www./..www./..www./prog/temp/filetypes.txt'> <a href='1.htm'> "
           "<a href='2.htm'> <a href='3.jpeg'>");
    for (int ticks = 0; ticks < 3; ++ticks) tick().Fire();
    // Connections 1 and 2 busy: the third waits, though connection 3 is free.
    EXPECT_EQ(std::tuple(engine.ConnectionAt(1).Address(), engine.ConnectionAt(2).Address(),
                         model.queue.Count(), Row(2).status),
              std::tuple("www.a.test/3.jpg", "www.a.test/2.htm", 2u, "Connecting to www.a.test"));
    EXPECT_EQ(ListTreeExcept(dir.Native(), dir.NativePath("site")), outside);
}

// A choice from the list resets the rows above it; a typed count from 24 up
// is refused.
TEST_F(EngineTest, ConnectionsCountResetsTheRowsAboveItAndRefusesFrom24Up) {
    engine.ChooseConnectionLimit("24");
    Start("www.a.test/");
    std::string page;
    for (int i = 0; i < 30; ++i) page += "<a href='" + std::to_string(i) + ".htm'> ";
    Answer(1, page);
    for (int i = 0; i < kConnectionCount; ++i) tick().Fire();  // every row "Connecting to ..."
    // Chosen and then typed, the rows reset so far, whether the typed one is refused.
    const std::tuple<const char*, int, bool> cases[] = {
        {"23", 1, false}, {"24", 1, true}, {"abc", 1, true}, {"2", 22, false}, {"0", 24, false}};
    for (const auto& [count, reset, refused] : cases) {
        engine.ChooseConnectionLimit(count);
        int idleRows = 0;
        for (int n = 1; n <= kConnectionCount; ++n) idleRows += Row(n).status == "Not Connected.";
        told.clear();
        engine.TypeConnectionLimit(count);
        EXPECT_EQ(std::tuple(idleRows, model.connectionLimit, told.size()),
                  std::tuple(reset, std::string(refused ? "4" : count), std::size_t{refused}))
            << count;
    }
}

// Each chunk restarts the silence timer, which measures silence, adds to the
// counters, and shows on its row only within the connections count (the sizes
// a row shows are in the window's crawling snapshot). The next chunk waits in
// the socket until this one is done.
TEST_F(EngineTest, EachChunkCountsAndShowsOnItsRowOneAtATime) {
    Start("www.a.test/p.htm");
    socket(1).Accept();
    const int starts = silence(1).starts;
    socket(1).Receive("HTTP/1.0 200 OK\r\nContent-Length: 2048\r\n\r\n");
    socket(1).Receive("more");  // held until the first chunk is done
    EXPECT_EQ(std::tuple(silence(1).starts, model.bytesReceived, socket(1).unread),
              std::tuple(starts + 1, 41, "more"));
    loop.RunUntilIdle();
    engine.ChooseConnectionLimit("0");  // its row is reset on every chunk
    socket(1).Receive("page");
    loop.RunUntilIdle();
    EXPECT_EQ(Row(1), (RowTexts{"Not Connected.", "0 KB", "-"}));
    // A stop while the chunk waits leaves the connection alone: nothing is saved.
    socket(1).Receive("the last chunk", true);
    engine.Stop();
    loop.RunUntilIdle();
    EXPECT_EQ(std::tuple(model.filesDone, engine.ConnectionAt(1).Response(), told),
              std::tuple(0, "", std::vector{K::Stopped}));
}

// Three silences end a job: two retries, then it is given up, and with no
// work left the site is complete, told once. A job whose request would climb
// above the site's root connects, sends nothing and closes, and ends the same
// way; a new crawl of it records its search text again.
TEST_F(EngineTest, AGivenUpJobCompletesTheSiteOnlyWithNoWorkLeft) {
    Start("www.a.test/");
    Answer(1, "<a href='slow.htm'> <a href='next.htm'>");
    for (int i = 0; i < 2; ++i) tick().Fire();  // next.htm on connection 1, slow.htm on 2
    for (int i = 0; i < 3; ++i) {
        socket(2).state = SocketState::Error;  // refused: not free until its timeout
        silence(2).Fire();
        loop.RunUntilIdle();
    }
    EXPECT_EQ(
        std::tuple(socket(2).connects.size(), model.Running(), Row(2).received, told),
        std::tuple(3u, true, "-", std::vector{K::PageSaved, K::TimedOut, K::TimedOut, K::GivenUp}));
    Answer(1, "");
    silence(2).Fire();  // a second ending tells nothing more: told once a crawl, below
    loop.RunUntilIdle();

    int closedAtOnce = 0;
    for (int crawl = 0; crawl < 2; ++crawl) {
        Start("www.a.test/../next.htm");
        for (int i = 0; i < 3; ++i) {
            socket(1).Accept();
            closedAtOnce += socket(1).state == SocketState::Closed;
            silence(1).Fire();
            loop.RunUntilIdle();
        }
    }
    // Each new job has its three attempts, whatever the connection's last one used.
    const auto count = [&](K kind) { return std::count(told.begin(), told.end(), kind); };
    EXPECT_EQ(std::tuple(socket(1).sent.size(), closedAtOnce, StatusLineOf(model),
                         count(K::TimedOut), count(K::SiteDownloaded)),
              std::tuple(2u, 6, "Website Downloaded!", 6, 3));
    // Each page's path and its text (none); a job given up leaves its path too.
    EXPECT_EQ(ReadNativeFile(dir.NativePath("site/_SearchData/a.test.txt")),
              "! a.test\\index.html\r\n\r\n! a.test\\slow.htm\r\n\r\n! a.test\\next.htm\r\n\r\n"
              "! a.test\\..\\next.htm\r\n\r\n! a.test\\..\\next.htm\r\n\r\n");
}

// A stop tears every job down and tells the window, which reloads; the exit
// stops a running crawl and sweeps what a stop left. The reload is the
// program's start again: the silence timers at their default and off (the
// model made fresh, and a pause holding the tick, are in the window's test).
TEST_F(EngineTest, StartStopReloadAndExit) {
    Start("www.a.test/x.htm");
    // A negative timeout is refused (a valid one is set in the wizard's closing test).
    EXPECT_FALSE(engine.SetSilenceTimeout(-1) || silence(3).interval != kDefaultSilenceMs);
    Answer(1, "<a href='y.htm'> <a href='z.htm'>");
    tick().Fire();  // one link fetched, one left queued
    engine.Stop();
    EXPECT_EQ(std::tuple(told.back(), StatusLineOf(model)),
              std::tuple(K::Stopped, "Downloading Site [www.a.test/x.htm]"));
    loop.RunUntilIdle();
    // (The address box taking the focus once is in the window's after-stop snapshot.)
    EXPECT_EQ(std::tuple(StatusLineOf(model), model.Running(), model.pauseAllowed, tick().enabled,
                         model.queue.Count()),
              std::tuple("Operation Cancelled.", false, false, false, 0u));
    for (int i = 1; i <= kConnectionCount; ++i)
        EXPECT_FALSE(socket(i).state != SocketState::Closed || silence(i).enabled ||
                     Row(i).status != "Not Connected.")
            << i;
    socket(1).Accept();  // a connect that lands after the stop is closed unused
    EXPECT_TRUE(socket(1).state == SocketState::Closed && socket(1).sent.size() == 1u);

    engine.Reload();  // the model made fresh shows in the window's after-stop snapshot
    EXPECT_TRUE(NativeExists(dir.NativePath("prog/dldata")));
    for (int i = 1; i <= kConnectionCount; ++i)
        EXPECT_FALSE(silence(i).interval != kDefaultSilenceMs || silence(i).enabled) << i;

    Start("www.a.test/new/x.htm");
    Answer(1, "<a href='y.htm'>");
    engine.Exit();  // stops the crawl
    loop.RunUntilIdle();
    EXPECT_EQ(std::tuple(model.Running(), socket(1).state, told.back()),
              std::tuple(false, SocketState::Closed, K::Ended));
    engine.Resume();  // resuming while idle enables the tick; the exit disables it
    WriteNativeFile(dir.NativePath("site/a.test/new/q.htm.tmp"), "");  // a folder this crawl made
    engine.Exit();
    loop.RunUntilIdle();
    EXPECT_FALSE(tick().enabled || NativeExists(dir.NativePath("site/a.test/new/q.htm.tmp")));
}

}  // namespace
}  // namespace vantorin::testing

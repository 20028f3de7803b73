#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "EngineDoubles.h"

namespace vantorin::testing {
namespace {

using HttpExchange = EngineTest;

TEST(RequestText, IsTheFixedHttp10GetByteForByte) {
    EXPECT_EQ(BuildRequestText("www.example.com", "/docs/a.htm"),
              "GET /docs/a.htm HTTP/1.0\r\nHost: www.example.com\r\n"
              "Referrer: www.example.com\r\nUser-Agent: Internet Explorer 6.01\r\n\r\n");
    // Every "/" leaves the host, then blanks are trimmed; "//" collapses once per pair.
    EXPECT_EQ(BuildRequestText(" a/b.com/ ", "///x//"),
              "GET //x/ HTTP/1.0\r\nHost: ab.com\r\nReferrer: ab.com\r\n"
              "User-Agent: Internet Explorer 6.01\r\n\r\n");
}

TEST_F(HttpExchange, RefusesPathsThatClimbAboveTheRoot) {
    const struct {
        const char* address;
        bool refused;
    } cases[] = {
        {"www.a.test/../x.htm", true},    {"www.a.test//../x.htm", true},
        {"www.a.test/\\../x.htm", true},  // the "\" became "/" before the request
        {"www.a.test/b/../x.htm", false}, {"www.a.test/..x.htm", true},
    };
    Start("www.a.test");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.address);
        sock(1).Close();
        engine.ConnectNext(c.address);
        const std::size_t sent = sock(1).sent.size();
        sock(1).Accept();
        EXPECT_EQ(sock(1).sent.size(), c.refused ? sent : sent + 1);
        EXPECT_EQ(engine.Slot(1).Response, c.refused ? "CANCEL" : "");
        EXPECT_EQ(sock(1).state, c.refused ? kSockClosed : kSockConnected);
        EXPECT_TRUE(out(1).enabled);  // a refused job ends through its timeout
    }
}

TEST_F(HttpExchange, ReadsContentLengthOnlyFromTheTwelveCharacterWindow) {
    const struct {
        const char* chunk;
        int expected;  // starting from 55
    } cases[] = {
        {"HTTP/1.0 200 OK\r\nContent-Length: 2048\r\n\r\n", 2048},
        {"Content-Length:    123456789012", 0},  // no CR LF inside the window
        {"Content-Length: 12345678901\r\n", 0},  // window ends before the CR LF
        {"Content-Length: 9999999999\r\n", 55},  // too big for 32 bits: kept
        {"Content-Length:2048\r\n", 48},         // the 16th character is skipped
        {"Content-Length: 12.5\r\n", 12},        // rounded half to even
        {"Content-Length: abc\r\n", 0},
        {"content-length: 2048\r\n", 55},        // exact case only
        {"HTTP/1.0 200 OK\r\nContent-Len", 55},  // split header is missed
    };
    Start("www.a.test");
    sock(1).Accept();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.chunk);
        engine.Slot(1).ContentLength = 55;
        sock(1).Receive(c.chunk);
        EXPECT_EQ(engine.Slot(1).ContentLength, c.expected);
    }
    EXPECT_EQ(window.size[1], "0 bytes");  // size label shows the last value read
}

TEST_F(HttpExchange, CompletesOnlyWhenTheServerHasClosed) {
    WantTypes(".htm\r\n");
    Start("www.a.test/dir/p.htm");
    sock(1).Accept();
    const std::string header = "HTTP/1.0 200 OK\r\n\r\n";  // 19 bytes
    const std::string page = "<a href=\"q.htm\">q</a>";    // 21 bytes
    sock(1).Receive(header);
    sock(1).Receive(page);
    EXPECT_EQ(engine.FilesDone, 0);  // the last chunk came, but the line is still open
    EXPECT_EQ(window.status[1], "Downloading www.a.test/dir/p.htm");
    EXPECT_EQ(window.received[1], "40 bytes");
    EXPECT_EQ(engine.TotalBytes, 40);

    sock(1).state = kSockClosing;
    sock(1).Receive("");
    EXPECT_EQ(engine.FilesDone, 1);
    const auto saved = SavedContents();
    EXPECT_TRUE(std::any_of(saved.begin(), saved.end(),
                            [](const std::string& f) { return Contains(f, "q</a>"); }));
    // Links resolve against the page's folder; the socket is closed to free the slot.
    EXPECT_EQ(window.list1.Items(), std::vector<std::string>{"www.a.test/dir/q.htm"});
    EXPECT_EQ(sock(1).state, kSockClosed);
    EXPECT_FALSE(window.command1);  // the queue is not empty: the crawl goes on
}

TEST_F(HttpExchange, LateChunkAboveTheConnectionsCountStillCompletes) {
    Start("www.a.test/x.htm");
    window.txtMax = "24";
    window.list1.AddItem("www.a.test/late.htm");
    sock(2).state = kSockConnected;  // slots 2-5 busy
    sock(3).state = kSockConnected;
    sock(4).state = kSockConnected;
    sock(5).state = kSockConnected;
    engine.tmrMove_Timer();
    ASSERT_EQ(engine.Slot(6).Url, "www.a.test/late.htm");
    sock(6).Accept();
    window.txtMax = "4";
    window.received[6] = "?";
    sock(6).Receive("HTTP/1.0 200 OK\r\n\r\nlate", false);
    EXPECT_EQ(window.status[6], "Not Connected.");
    EXPECT_EQ(window.size[6], "0 KB");
    EXPECT_EQ(window.received[6], "-");
    EXPECT_EQ(engine.Slot(6).Response, "HTTP/1.0 200 OK\r\n\r\nlate");
    Finish(6);
    EXPECT_EQ(engine.FilesDone, 1);
    EXPECT_EQ(sock(6).state, kSockClosed);
}

TEST_F(HttpExchange, LastJobDoneWithEmptyQueueCompletesTheSite) {
    dialogs.answers = {kAnswerYes};
    Start("www.a.test/only.htm");
    sock(1).Accept();
    Finish(1);
    EXPECT_TRUE(window.command1);
    EXPECT_EQ(window.label6, "Website Downloaded!");
    ASSERT_EQ(dialogs.asked.size(), 1u);
    EXPECT_EQ(dialogs.asked[0].text,
              "The website has been downloaded.\r\n\r\nWould you like to browse the download "
              "directory?");
    EXPECT_EQ(dialogs.asked[0].title, "Done.");
    EXPECT_EQ(dialogs.asked[0].style, 68);
    EXPECT_EQ(shell.folders, std::vector<std::string>{vars.TargetFolder});
}

TEST_F(HttpExchange, StopInsideAYieldLeavesTheSlotAlone) {
    Start("www.a.test/x.htm");
    sock(1).Accept();
    duringYield = [this] {
        engine.StopNOW();
        Start("www.b.test/y.htm");  // the same slot is reused at once
    };
    Finish(1, "old page");
    for (const auto& f : SavedContents()) EXPECT_FALSE(Contains(f, "old page"));
    EXPECT_EQ(engine.Slot(1).Response, "");
    EXPECT_EQ(engine.Slot(1).Url, "www.b.test/y.htm");
    EXPECT_EQ(sock(1).state, kSockConnecting);  // the new job's socket is untouched
}

TEST_F(HttpExchange, CountersSkipAnAddThatWouldOverflow) {
    constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
    const struct {
        const char* name;
        std::int32_t total, received;  // before a 4-byte chunk
        std::int32_t totalAfter, receivedAfter;
    } cases[] = {
        {"total full", kMax - 2, 10, kMax - 2, 14},
        {"received full", 10, kMax - 2, 14, kMax - 2},
        {"both at the top", kMax - 4, kMax - 4, kMax, kMax},
        {"both full", kMax, kMax, kMax, kMax},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Start("www.a.test/x.htm");
        sock(1).Accept();
        engine.TotalBytes = c.total;
        engine.Slot(1).BytesReceived = c.received;
        sock(1).Receive("abcd");
        EXPECT_EQ(engine.TotalBytes, c.totalAfter);
        EXPECT_EQ(engine.Slot(1).BytesReceived, c.receivedAfter);
        // The chunk itself is still kept; only the counters stop.
        EXPECT_EQ(engine.Slot(1).Response, "abcd");
        engine.StopNOW();
    }
}

}  // namespace
}  // namespace vantorin::testing

#include <gtest/gtest.h>

#include "EngineDoubles.h"

namespace vantorin::testing {
namespace {

using Scheduler = EngineTest;

TEST_F(Scheduler, TakesTheNewestItemAndOnlyFillsTheFirstNSlots) {
    Start("www.a.test");  // slot 1 busy with the start page
    for (const char* item : {"www.a.test/1", "www.a.test/2", "www.a.test/3", "www.a.test/4"})
        window.list1.AddItem(item);
    window.txtMax = "3";
    engine.tmrMove_Timer();
    engine.tmrMove_Timer();
    EXPECT_EQ(engine.Slot(2).Url, "www.a.test/4");
    EXPECT_EQ(engine.Slot(3).Url, "www.a.test/3");
    // Slots 1-3 busy: the queue waits, though slot 4 is closed.
    engine.tmrMove_Timer();
    EXPECT_EQ(window.list1.Items(), (std::vector<std::string>{"www.a.test/1", "www.a.test/2"}));
    EXPECT_TRUE(sock(4).connects.empty());
    EXPECT_EQ(window.label5, "2 Files");
    // A socket that closes frees its slot on the next tick.
    sock(2).Close();
    engine.tmrMove_Timer();
    EXPECT_EQ(engine.Slot(2).Url, "www.a.test/2");
    // "2.5" rounds to 2 (half to even): slot 3 is above N even once closed.
    window.txtMax = "2.5";
    sock(3).Close();
    EXPECT_EQ(engine.FindFreeSlot(), 0);
    window.txtMax = "3.5";
    EXPECT_EQ(engine.FindFreeSlot(), 3);
    window.txtMax = "0";
    EXPECT_EQ(engine.FindFreeSlot(), 0);
}

TEST_F(Scheduler, SplitsHostAndPathAndShapesThePath) {
    const std::string tail(1200, 'p');
    const std::string cutPath = ("/v.1/" + tail).substr(0, 999);  // cut at 999, as designed
    const struct {
        std::string address, url, host, path, firstLine;
    } cases[] = {
        {"www.e.com", "www.e.com", "www.e.com", "//", "GET / HTTP/1.0"},
        {"www.e.com/about", "www.e.com/about", "www.e.com", "/about/", "GET /about/ HTTP/1.0"},
        {"www.e.com/v1.0/docs", "www.e.com/v1.0/docs", "www.e.com", "/v1.0/docs",
         "GET /v1.0/docs HTTP/1.0"},
        {"www.e.com/pics/cat.jpeg", "www.e.com/pics/cat.jpg", "www.e.com", "/pics/cat.jpg",
         "GET /pics/cat.jpg HTTP/1.0"},
        {"http://www.e.com/a.htm", "www.e.com/a.htm", "www.e.com", "/a.htm", "GET /a.htm HTTP/1.0"},
        {"www.e.com\\x\\y.htm", "www.e.com/x/y.htm", "www.e.com", "/x/y.htm",
         "GET /x/y.htm HTTP/1.0"},
        {"www.e.com/docs/index.html", "www.e.com/docs/index.html", "www.e.com", "/docs/",
         "GET /docs/ HTTP/1.0"},
        {"www.e.com//a", "www.e.com//a", "www.e.com", "//a/", "GET /a/ HTTP/1.0"},
        {"www.e.com:8080/x.htm", "www.e.com:8080/x.htm", "www.e.com:8080", "/x.htm",
         "GET /x.htm HTTP/1.0"},
        {"www.e.com/v.1/" + tail, "www.e.com/v.1/" + tail, "www.e.com", cutPath,
         "GET " + cutPath + " HTTP/1.0"},
    };
    Start("www.e.com");
    window.txtMax = "24";
    for (const auto& c : cases) {
        SCOPED_TRACE(c.address.substr(0, 40));
        sock(1).Close();
        engine.ConnectNext(c.address);
        const std::string request = RequestOf(1);
        const ConnectionSlot& s = engine.Slot(1);
        EXPECT_EQ(s.Url, c.url);
        EXPECT_EQ(s.Host, c.host);
        EXPECT_EQ(s.Path, c.path);
        EXPECT_EQ(sock(1).connects.back(), std::make_pair(c.host, 80));
        EXPECT_EQ(window.status[1], "Connecting to " + c.host);
        EXPECT_EQ(request.substr(0, request.find("\r\n")), c.firstLine);
    }
}

TEST_F(Scheduler, NewJobStartsCleanAndRestartsItsTimeout) {
    Start("www.a.test");
    ConnectionSlot& s = engine.Slot(1);
    s.Response = "old";
    s.BytesReceived = 9;
    s.ContentLength = 9;
    s.Attempts = 3;
    sock(1).Close();
    const int starts = out(1).starts;
    window.list1.AddItem("www.a.test/n.htm");
    engine.tmrMove_Timer();
    EXPECT_EQ(s.Response, "");
    EXPECT_EQ(s.BytesReceived, 0);
    EXPECT_EQ(s.ContentLength, 0);
    EXPECT_EQ(s.Attempts, 1);
    EXPECT_EQ(out(1).starts, starts + 1);
    EXPECT_TRUE(out(1).enabled);
}

TEST_F(Scheduler, StartsNothingWithoutARunningCrawl) {
    window.list1.AddItem("www.a.test/x");
    engine.tmrMove_Timer();
    engine.ConnectNext("www.a.test/y");
    EXPECT_EQ(window.list1.ListCount(), 1);
    for (int i = 1; i <= kSlotCount; ++i) EXPECT_TRUE(sock(i).connects.empty());
}

TEST_F(Scheduler, ConnectionsCountIsValidatedWhenTypedAndRowsResetWhenChosen) {
    const struct {
        const char* typed;
        bool refused;
    } typedCases[] = {{"4", false}, {"23", false}, {"0", false},  {"-3", false},
                      {"24", true}, {"99", true},  {"abc", true}, {"", true}};
    for (const auto& c : typedCases) {
        SCOPED_TRACE(c.typed);
        window.txtMax = c.typed;
        dialogs.asked.clear();
        engine.txtMax_Change();
        EXPECT_EQ(window.txtMax, c.refused ? "4" : c.typed);
        ASSERT_EQ(dialogs.asked.size(), c.refused ? 1u : 0u);
        if (c.refused) {
            EXPECT_EQ(dialogs.asked[0].text, "Must be a number of connections from 1 to 24");
            EXPECT_EQ(dialogs.asked[0].title, "Try Again");
            EXPECT_EQ(dialogs.asked[0].style, 16);
        }
    }

    const struct {
        const char* chosen;
        int firstReset;  // 0: no row reset
    } chosenCases[] = {{"20", 21}, {"1", 2}, {"23", 24}, {"24", 0}};
    dialogs.asked.clear();
    for (const auto& c : chosenCases) {
        SCOPED_TRACE(c.chosen);
        window.status.clear();
        window.txtMax = c.chosen;
        engine.txtMax_Click();
        const int expected = c.firstReset ? kSlotCount - c.firstReset + 1 : 0;
        EXPECT_EQ(static_cast<int>(window.status.size()), expected);
        if (c.firstReset) {
            EXPECT_EQ(window.status.begin()->first, c.firstReset);
        }
        EXPECT_TRUE(dialogs.asked.empty());
    }
}

}  // namespace
}  // namespace vantorin::testing

#include <gtest/gtest.h>

#include "EngineDoubles.h"

namespace vantorin::testing {
namespace {

using CrawlStart = EngineTest;

TEST_F(CrawlStart, CleansTheAddressAndFetchesItDirectly) {
    const struct {
        const char* typed;
        const char* text1;
        const char* siteHost;
        const char* host;  // connected to on port 80
    } cases[] = {
        {"  HTTP://Example.com/a  ", "www.Example.com/a", "Example.com", "www.Example.com"},
        {"http://www.example.com", "www.example.com", "example.com", "www.example.com"},
        {"example.com/www.x", "example.com/www.x", "example.com", "example.com"},
        {"WWW.Site.org", "WWW.Site.org", "WWW.Site.org", "WWW.Site.org"},
        {"", "www.", "", "www."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        engine.StopNOW();
        const std::size_t before = sock(1).connects.size();
        Start(c.typed);
        EXPECT_EQ(window.text1, c.text1);
        EXPECT_EQ(vars.SiteHost, c.siteHost);
        EXPECT_EQ(window.label6, std::string("Downloading Site [") + c.text1 + "]");
        ASSERT_EQ(sock(1).connects.size(), before + 1);
        EXPECT_EQ(sock(1).connects.back(), std::make_pair(std::string(c.host), 80));
        EXPECT_EQ(window.list1.ListCount(), 0);  // the start page skips the queue
    }
}

TEST_F(CrawlStart, SwitchesTheWindowIntoDownloadingAndResetsTheCrawl) {
    WantTypes(".htm\r\n.HTML \r\n");
    window.list1.AddItem("old/queued");
    engine.TotalBytes = 77;
    engine.FilesDone = 5;
    vars.MadeFolders = "c:\\x\\*";
    vars.LastSearchPage = ":p:";
    sock(7).state = kSockConnected;  // a socket left over from before

    Start("www.a.test");
    EXPECT_FALSE(window.command1);
    EXPECT_TRUE(window.command2);
    EXPECT_TRUE(window.pause);
    EXPECT_FALSE(window.text1Enabled);
    EXPECT_TRUE(move().enabled);
    EXPECT_EQ(move().interval, 20);
    EXPECT_EQ(engine.TotalBytes, 0);
    EXPECT_EQ(engine.FilesDone, 0);
    EXPECT_EQ(vars.MadeFolders, "");
    EXPECT_EQ(vars.LastSearchPage, "");
    EXPECT_EQ(vars.FileTypeSet, ":.htm::.html:");
    EXPECT_EQ(sock(7).state, kSockClosed);
    EXPECT_EQ(window.list1.ListCount(), 0);
    EXPECT_TRUE(out(1).enabled);
    EXPECT_EQ(out(1).interval, kDefaultTimeoutMs);
}

TEST_F(CrawlStart, OnlyEnterInTheAddressBoxStarts) {
    window.text1 = "www.a.test";
    for (int key : {10, 32, 65, 27}) engine.Text1_KeyDown(key);
    EXPECT_TRUE(window.command1);
    EXPECT_TRUE(sock(1).connects.empty());
    engine.Text1_KeyDown(13);
    EXPECT_FALSE(window.command1);
    EXPECT_EQ(sock(1).connects.size(), 1u);
}

}  // namespace
}  // namespace vantorin::testing

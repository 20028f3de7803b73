// One whole crawl over real sockets and timers: the engine against an HTTP
// server on port 80 of 127.0.0.1, with "www.testsite.test" named in the hosts
// file. run_real_crawl.sh provides that inside a private network namespace.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdlib>

#include "EngineDoubles.h"
#include "platform/PageText.h"
#include "platform/QtSocket.h"
#include "platform/QtTimer.h"

namespace vantorin::testing {
namespace {

TEST(RealCrawl, MirrorsTheFixtureSiteOverPort80) {
    TempDir dir;
    CrawlVariables vars;
    vars.TargetFolder = dir.Backslashed() + "site\\";
    FileSystem fs(vars.TargetFolder, dir.Backslashed() + "prog");
    fs.CreateFolder(vars.TargetFolder);
    fs.CreateFolder(fs.ProgramFolder());
    fs.CreateFolder(fs.ProgramFolder() + "\\temp");
    fs.WriteWhole(fs.ProgramFolder() + "\\temp\\filetypes.txt", ".htm\r\n.html\r\n.gif\r\n");

    RecordingWindow window;
    ScriptedDialogs dialogs;
    dialogs.answers = {kAnswerNo};
    RecordingShell shell;
    CrawlEngine engine(
        window, dialogs, shell, vars, fs,
        [](const std::string& path) {
            return VisiblePageText(FileSystem::ToNative(path).string());
        },
        [] { QCoreApplication::processEvents(); }, QtSocketFactory(), QtTimerFactory());
    for (int i = 1; i <= kSlotCount; ++i) engine.SetTimeoutInterval(i, 5000);

    window.text1 = "http://www.testsite.test";
    engine.ConnectNowNow();
    QElapsedTimer clock;
    clock.start();
    while (!window.command1 && clock.elapsed() < 60000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);

    ASSERT_TRUE(window.command1) << "the crawl did not complete";
    EXPECT_EQ(window.label6, "Website Downloaded!");
    ASSERT_EQ(dialogs.asked.size(), 1u);
    EXPECT_EQ(dialogs.asked[0].title, "Done.");
    EXPECT_TRUE(shell.folders.empty());

    const auto mirrored = [&](const std::string& relative) {
        return ReadNativeFile(dir.NativePath("site/testsite.test/" + relative));
    };
    EXPECT_TRUE(Contains(mirrored("index.html"), "Welcome to the test site"));
    EXPECT_FALSE(Contains(mirrored("index.html"), "HTTP/1.0 200"));  // header stripped
    EXPECT_TRUE(Contains(mirrored("about.htm"), "About this site"));
    EXPECT_TRUE(Contains(mirrored("docs/index.html"), "Document list"));
    EXPECT_TRUE(Contains(mirrored("docs/page.htm"), "Deep page text"));
    EXPECT_TRUE(StartsWith(mirrored("logo.gif"), std::string("GIF89a\x01\x00\x01\x00", 10)));
    EXPECT_FALSE(NativeExists(dir.NativePath("site/testsite.test/file.zip")));
    EXPECT_FALSE(NativeExists(dir.NativePath("site/othersite.test")));
    // The zip is on the site but not a wanted type.
    const auto& notTaken = window.list2.Items();
    EXPECT_NE(std::find(notTaken.begin(), notTaken.end(), "www.testsite.test/file.zip"),
              notTaken.end());
    EXPECT_GE(engine.FilesDone, 5);
    EXPECT_GT(engine.TotalBytes, 500);

    // The server's request log, when the script passes it: the exact request lines.
    if (const char* log = std::getenv("VANTORIN_CRAWL_SERVER_LOG")) {
        const std::string requests = ReadNativeFile(log);
        for (const char* line :
             {"\"GET / HTTP/1.0\"", "\"GET /about.htm HTTP/1.0\"", "\"GET /docs/ HTTP/1.0\"",
              "\"GET /docs/page.htm HTTP/1.0\"", "\"GET /logo.gif HTTP/1.0\""})
            EXPECT_TRUE(Contains(requests, line)) << line << "\n" << requests;
        EXPECT_FALSE(Contains(requests, "file.zip"));
    }
}

}  // namespace
}  // namespace vantorin::testing

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

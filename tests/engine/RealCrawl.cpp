// One whole crawl over real sockets and timers: the engine against an HTTP
// server on port 80 of 127.0.0.1, with "www.testsite.test" named in the hosts
// file. run_real_crawl.sh provides that inside a private network namespace.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>

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
    WriteNativeFile(dir.NativePath("prog/temp/filetypes.txt"), ".htm\r\n.html\r\n.gif\r\n");
    RecordingWindow window;
    ScriptedDialogs dialogs;
    RecordingShell shell;
    CrawlEngine engine(
        window, dialogs, shell, vars, fs,
        [](const std::string& p) { return VisiblePageText(FileSystem::ToNative(p).string()); },
        [] { QCoreApplication::processEvents(); }, QtSocketFactory(), QtTimerFactory());

    window.text1 = "http://www.testsite.test";
    engine.ConnectNowNow();
    for (QDeadlineTimer until(60000); !window.command1 && !until.hasExpired();)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    ASSERT_EQ(window.label6, "Website Downloaded!");

    // The start page, a page two links deep (through "docs/"), an image; no unwanted type.
    const std::string site = "site/testsite.test/";
    EXPECT_TRUE(StartsWith(ReadNativeFile(dir.NativePath(site + "index.html")), "<html>"));
    EXPECT_TRUE(Contains(ReadNativeFile(dir.NativePath(site + "docs/page.htm")), "Deep page"));
    EXPECT_TRUE(StartsWith(ReadNativeFile(dir.NativePath(site + "logo.gif")), "GIF89a"));
    EXPECT_FALSE(NativeExists(dir.NativePath(site + "file.zip")));
}

}  // namespace
}  // namespace vantorin::testing

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

// A crawl writes only inside its target folder, even where a name climbs out
// once "www." is cut from it ("..www." becomes ".."), and even toward the
// program folder, which the program's own lists may change.
#include <string>
#include <utility>

#include "tests/engine/EngineDoubles.h"

namespace vantorin::testing {
namespace {

TEST_F(EngineTest, ClimbingNamesNeverLeaveTheTargetFolder) {
    WriteNativeFile(dir.NativePath("prog/temp/filetypes.txt"), ".html\r\n");  // wanted types
    Start("www.a.test");
    const auto outside = [this] { return ListTreeExcept(dir.Native(), dir.NativePath("site")); };
    const auto before = outside();
    // The saved page's own address, and a link on it, queued with a placeholder.
    const std::pair<const char*, std::string> cases[] = {
        {"www.a.test/a/..www./..www./..www./prog/x.html", "y.html"},
        {"www.a.test/a.html", "a/..www./..www./..www./prog/z.html"},
        {"www.a.test/a.html", "a/..www./..www./..www./prog/temp/filetypes.txt"},
    };
    for (const auto& [address, link] : cases) {
        sock(1).Close();
        engine.ConnectNext(address);
        sock(1).Accept();
        sock(1).Receive("HTTP/1.0 200 OK\r\n\r\n<a href=\"" + link + "\">", true);
        EXPECT_EQ(outside(), before) << address;
    }
    EXPECT_TRUE(NativeExists(dir.NativePath("site/a.test/a.html")));
}

}  // namespace
}  // namespace vantorin::testing

// A crawl writes only inside its target folder, even where a name climbs out
// once "www." is cut from it ("..www." becomes ".."), and even toward the
// program folder, which the program's own lists may change.
#include <filesystem>
#include <set>
#include <string>

#include "tests/engine/EngineDoubles.h"

namespace vantorin::testing {
namespace {

class Containment : public EngineTest {
protected:
    std::set<std::string> ProgramFiles() const {
        std::set<std::string> found;
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(dir.NativePath("prog")))
            found.insert(entry.path().string());
        return found;
    }
};

TEST_F(Containment, ClimbingNamesNeverReachTheProgramFolder) {
    WantTypes(".html\r\n");
    Start("www.a.test");
    const std::set<std::string> before = ProgramFiles();
    const struct {
        const char* address;  // the saved page's own address
        const char* link;     // a link on it, queued with a placeholder
    } cases[] = {
        {"www.a.test/a/..www./..www./..www./prog/x.html", "y.html"},
        {"www.a.test/a.html", "a/..www./..www./..www./prog/z.html"},
        {"www.a.test/a.html", "a/..www./..www./..www./prog/temp/filetypes.txt"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.address);
        sock(1).Close();
        engine.ConnectNext(c.address);
        sock(1).Accept();
        Finish(1, std::string("<a href=\"") + c.link + "\">");
        EXPECT_EQ(ProgramFiles(), before);
    }
    EXPECT_TRUE(NativeExists(dir.NativePath("site/a.test/a.html")));
    EXPECT_EQ(ReadNativeFile(dir.NativePath("prog/temp/filetypes.txt")), ".html\r\n");
}

}  // namespace
}  // namespace vantorin::testing

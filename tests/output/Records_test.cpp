#include "output/Records.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/MirrorFixture.h"

namespace vantorin::testing {

TEST(GetPageText, WaitsFourTurnsThenFoldsLineEndsAndBlanks) {
    const std::pair<const char*, const char*> cases[] = {
        {"a\r\n\r\n\r\nb", "a b"}, {"a\rb", "a b"},          {"a    b", "a b"},
        {"a     b", "a  b"},       {"a\n\n\n\n\nb", "a  b"}, {"\tkeep\ttabs\t", "\tkeep\ttabs\t"}};
    MirrorFixture f;
    int turns = 0, reads = 0;
    f.loop.betweenTurns = [&] { ++turns; };
    for (auto [page, expected] : cases) {
        f.m.pageText = [&, page](const std::string& path) {
            EXPECT_EQ(std::tuple(turns, path), std::tuple(4 * ++reads, "C:\\w\\p.html"));
            return std::string(page);
        };
        EXPECT_EQ(RunToEnd(GetPageText("C:\\w\\p.html", f.m), f.loop), expected) << page;
    }
}

TEST(RecordSearchText, OneFilePerHostAndOnlyAnImmediateRepeatSuppressed) {
    MirrorFixture f;
    const std::string a = f.m.targetFolder + "site.com\\A.html ";
    const std::string b = f.m.targetFolder + "site.com\\dir\\b.html";
    RecordSearchText("first", "www.site.com", a, f.m);
    RecordSearchText("again", "www.site.com", a, f.m);
    RecordSearchText("other", "www.site.com", b, f.m);
    // A page whose name holds the next one's whole name is no repeat of it.
    RecordSearchText("t2", "xsite.com", f.m.targetFolder + "xsite.com\\a.html", f.m);
    RecordSearchText("back", "www.site.com", a, f.m);
    EXPECT_EQ(ReadNativeFile(f.Target("_SearchData/site.com.txt")),
              "! site.com\\a.html\r\nfirst\r\n! site.com\\dir\\b.html\r\nother\r\n"
              "! site.com\\a.html\r\nback\r\n");
    EXPECT_EQ(ReadNativeFile(f.Target("_SearchData/xsite.com.txt")),
              "! xsite.com\\a.html\r\nt2\r\n");
}

}  // namespace vantorin::testing

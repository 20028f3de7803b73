#include "output/Records.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/MirrorFixture.h"

namespace vantorin {

using namespace testing;

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

// Placeholders go only from the folders this crawl made (finding them whatever
// their case is the file system's part); fields shorter than 5 are skipped,
// an empty one ends the sweep.
TEST(RemoveTempFiles, SweepsOnlyTheFoldersTheCrawlMade) {
    MirrorFixture f;
    const char* folders[] = {"abc", "abcde", "late", "older"};
    for (const char* d : folders) WriteNativeFile(f.Target(d) + "/x.tmp", "");
    const auto cwd = std::filesystem::current_path();
    std::filesystem::current_path(f.Target(""));
    f.m.madeFolders = "abc\\*abcde*" + f.m.targetFolder + "late\\**older\\*";
    RemoveTempFiles(f.m);
    std::filesystem::current_path(cwd);
    std::string kept;
    for (const char* d : folders) kept += NativeExists(f.Target(d) + "/x.tmp") ? '1' : '0';
    EXPECT_EQ(kept, "1001");
}

}  // namespace vantorin

#include "output/Records.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "output/LocalPath.h"
#include "tests/support/MirrorFixture.h"

namespace vantorin {
namespace {

using testing::NativeExists;
using testing::ReadNativeFile;
using testing::WriteNativeFile;

TEST(GetPageText, YieldsFourTimesThenFoldsLineEndsAndBlanks) {
    struct Case {
        const char* page;
        const char* expected;
    } cases[] = {
        {"a\r\nb", "a b"},
        {"a\n\rb", "a b"},
        {"a\r\rb", "a b"},
        {"a    b", "a b"},
        {"a     b", "a  b"},
        {"a\r\n\r\nb", "a b"},
        {"a\n\n\n\n\nb", "a  b"},
        {"\tkeep\ttabs\t", "\tkeep\ttabs\t"},
        {"", ""},
    };
    for (const auto& c : cases) {
        testing::MirrorFixture f;
        int yields = 0;
        int yieldsBeforeRead = -1;
        std::string asked;
        f.m.yield = [&] { ++yields; };
        f.m.pageText = [&](const std::string& path) {
            yieldsBeforeRead = yields;
            asked = path;
            return std::string(c.page);
        };
        EXPECT_EQ(GetPageText("C:\\w\\p.html", f.m), c.expected) << c.page;
        EXPECT_EQ(yieldsBeforeRead, 4);
        EXPECT_EQ(asked, "C:\\w\\p.html");
    }
}

TEST(RecordSearchText, SuppressesOnlyAnImmediateRepeat) {
    testing::MirrorFixture f;
    const std::string a = f.vars.TargetFolder + "site.com\\A.html ";
    const std::string b = f.vars.TargetFolder + "site.com\\dir\\b.html";
    RecordSearchText("first", "www.site.com", a, f.m);
    RecordSearchText("again", "www.site.com", a, f.m);
    RecordSearchText("other", "www.site.com", b, f.m);
    RecordSearchText("back", "www.site.com", a, f.m);
    EXPECT_EQ(ReadNativeFile(f.Target("_SearchData/site.com.txt")),
              "! site.com\\a.html\r\nfirst\r\n"
              "! site.com\\dir\\b.html\r\nother\r\n"
              "! site.com\\a.html\r\nback\r\n");
    EXPECT_EQ(f.vars.LastSearchPage, ":site.com\\a.html:");
}

TEST(RecordSearchText, OneFilePerSlotHost) {
    testing::MirrorFixture f;
    RecordSearchText("t1", "www.one.com", f.vars.TargetFolder + "one.com\\a.html", f.m);
    RecordSearchText("t2", "two.org", f.vars.TargetFolder + "two.org\\a.html", f.m);
    EXPECT_EQ(ReadNativeFile(f.Target("_SearchData/one.com.txt")), "! one.com\\a.html\r\nt1\r\n");
    EXPECT_EQ(ReadNativeFile(f.Target("_SearchData/two.org.txt")), "! two.org\\a.html\r\nt2\r\n");
}

// The sweep deletes placeholders only in folders this crawl made, found
// whatever the case of their real names, and skips fields shorter than 5.
TEST(RemoveTempFiles, SweepsOnlyTheFoldersTheCrawlMade) {
    testing::MirrorFixture f;
    WriteNativeFile(f.Target("before.tmp"), "target folder existed before");
    std::filesystem::create_directories(f.Target("old.com"));
    WriteNativeFile(f.Target("old.com/x.tmp"), "folder existed before");

    std::string placeholder = f.vars.TargetFolder + "www.Site.com/Img/a.gif.tmp";
    AppendToFile("queued", placeholder, f.m);
    std::string old = f.vars.TargetFolder + "old.com/y.tmp";
    AppendToFile("queued", old, f.m);
    WriteNativeFile(f.Target("Site.com/page.html"), "kept");
    WriteNativeFile(f.Target("Site.com/b.tmp"), "queued");
    ASSERT_TRUE(NativeExists(f.Target("Site.com/Img/a.gif.tmp")));

    RemoveTempFiles(f.m);
    EXPECT_FALSE(NativeExists(f.Target("Site.com/Img/a.gif.tmp")));
    EXPECT_FALSE(NativeExists(f.Target("Site.com/b.tmp")));
    EXPECT_TRUE(NativeExists(f.Target("Site.com/page.html")));
    EXPECT_TRUE(NativeExists(f.Target("before.tmp")));
    EXPECT_TRUE(NativeExists(f.Target("old.com/x.tmp")));
    EXPECT_TRUE(NativeExists(f.Target("old.com/y.tmp")));
}

TEST(RemoveTempFiles, ShortFieldsAndAnEmptyListSweepNothing) {
    testing::MirrorFixture f;
    WriteNativeFile(f.Target("ab/x.tmp"), "short field");
    WriteNativeFile(f.Target("abcd/x.tmp"), "long enough");
    WriteNativeFile(f.Target("late/x.tmp"), "after an empty field");
    const auto cwd = std::filesystem::current_path();
    std::filesystem::current_path(f.Target(""));

    RemoveTempFiles(f.m);  // nothing made: nothing swept
    EXPECT_TRUE(NativeExists(f.Target("abcd/x.tmp")));

    f.vars.MadeFolders = "ab\\*abcd\\*" + f.vars.TargetFolder + "late";
    RemoveTempFiles(f.m);
    EXPECT_TRUE(NativeExists(f.Target("ab/x.tmp")));
    EXPECT_FALSE(NativeExists(f.Target("abcd/x.tmp")));
    EXPECT_FALSE(NativeExists(f.Target("late/x.tmp")));

    WriteNativeFile(f.Target("abcd/x.tmp"), "again");
    WriteNativeFile(f.Target("late/x.tmp"), "again");
    f.vars.MadeFolders = "abcd\\**" + f.vars.TargetFolder + "late\\*";
    RemoveTempFiles(f.m);
    EXPECT_FALSE(NativeExists(f.Target("abcd/x.tmp")));
    EXPECT_TRUE(NativeExists(f.Target("late/x.tmp")));  // the empty field ended the sweep
    std::filesystem::current_path(cwd);
}

}  // namespace
}  // namespace vantorin

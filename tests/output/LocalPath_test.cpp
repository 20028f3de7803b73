#include "output/LocalPath.h"

#include <gtest/gtest.h>

#include "platform/Text.h"
#include "tests/support/TempDir.h"

namespace vantorin {
namespace {

using testing::NativeExists;
using testing::TempDir;

TEST(CleanNames, CharacterTableThenDefaultExtension) {
    struct Case {
        const char* in;
        const char* link;
        const char* file;
    } cases[] = {
        {"a**b<c>", "ab_c_", "ab_c_.html"},
        {"x???y", "x_y", "x_y.html"},
        {"page", "page", "page.html"},
        {"page.php", "page.php", "page.php"},
        {"page.php?id=2&x=!", "page.php_id=2_x=_", "page.php_id=2_x=_"},
        {"{a}|b", "ab", "ab.html"},
        {"a:\"b", "a:\"b", "a:\"b.html"},
        {"", "", ".html"},
        {"________", "_", "_.html"},            // eight shrink to one
        {"_________", "__", "__.html"},         // nine keep two, as designed
        {"________________", "__", "__.html"},  // sixteen keep two
        {"a?_?_b", "a_b", "a_b.html"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(CleanLinkName(c.in), c.link) << c.in;
        EXPECT_EQ(CleanFileName(c.in), c.file) << c.in;
    }
}

TEST(TopLevel, OnlyFilesDirectlyInTheHostFolder) {
    struct Case {
        const char* path;
        const char* host;
        bool top;
    } cases[] = {
        {"C:\\Websites\\site.com\\index.html", "site.com", true},
        {"C:\\Websites\\site.com\\dir\\a.html", "site.com", false},
        {"C:/Websites/SITE.com/a.html", "site.COM", true},
        // The character right after "host\" is skipped before the test.
        {"C:\\Websites\\site.com\\\\a.html", "site.com", true},
        {"C:\\Websites\\site.com\\a\\", "site.com", false},
        // Host not in the path: the test reads from position key length + 1.
        {"C:\\other\\x.html", "site.com", true},
        {"C:\\a\\b\\c\\d.html", "x", false},
    };
    for (const auto& c : cases) EXPECT_EQ(IsTopLevelFile(c.path, c.host), c.top) << c.path;
}

TEST(GetToken, FieldsEmptyFieldsAndLimits) {
    struct Case {
        const char* text;
        int index;
        const char* sep;
        const char* field;
    } cases[] = {
        {"a*b*", 1, "*", "a"},   {"a*b*", 2, "*", "b"}, {"a*b*", 3, "*", ""},
        {"abc", 1, "*", "abc"},  {"abc", 2, "*", ""},   {"*x", 1, "*", ""},
        {"*x", 2, "*", "x"},     {"a**b", 3, "*", "b"}, {"  a*b  ", 2, "*", "b"},
        {"a*b", 0, "*", ""},     {"a*b", -1, "*", ""},  {"", 1, "*", ""},
        {"a*b", 1, "**", "a*b"},  // a wide separator never ends a field
    };
    for (const auto& c : cases)
        EXPECT_EQ(GetToken(c.text, c.index, c.sep), c.field) << c.text << " #" << c.index;

    std::string many;
    for (int i = 0; i < 40000; ++i) many += "x*";
    EXPECT_EQ(GetToken(many, 32767, "*"), "x");
    EXPECT_EQ(GetToken(many, 32768, "*"), "");  // the counter would pass 32767
}

TEST(GetToken, FieldsJoinedRebuildTheTrimmedText) {
    const char* texts[] = {"a*b*c", "*a**b*", " x * y ", "****"};
    for (const char* text : texts) {
        std::string joined;
        std::string trimmed = Trim(text);
        int fields = 1;
        for (char c : trimmed) fields += c == '*';
        for (int i = 1; i <= fields; ++i) joined += (i > 1 ? "*" : "") + GetToken(text, i, "*");
        EXPECT_EQ(joined, trimmed) << text;
    }
}

class MakeLocalPathTest : public ::testing::Test {
protected:
    TempDir dir;
    CrawlVariables vars;
    FileSystem fs{vars.TargetFolder, dir.Backslashed() + "program"};
    void SetUp() override { vars.TargetFolder = dir.Backslashed() + "Websites\\"; }
};

TEST_F(MakeLocalPathTest, MapsAddressAndMakesFoldersRootFirst) {
    std::string path = "  " + vars.TargetFolder + "www.site.com/dir/sub/page.html ";
    MakeLocalPath(path, vars, fs);
    EXPECT_EQ(path, vars.TargetFolder + "site.com\\dir\\sub\\page.html");
    EXPECT_EQ(vars.SavePath, path);
    EXPECT_TRUE(NativeExists(dir.NativePath("Websites/site.com/dir/sub")));
    EXPECT_FALSE(NativeExists(dir.NativePath("Websites/site.com/dir/sub/page.html")));
    // Only folders this call created are listed, lower-cased, in order.
    std::string base = LCase(vars.TargetFolder);
    EXPECT_EQ(vars.MadeFolders, base + "*" + base + "site.com\\*" + base + "site.com\\dir\\*" +
                                    base + "site.com\\dir\\sub\\*");

    std::string again = vars.TargetFolder + "site.com/dir/other.html";
    MakeLocalPath(again, vars, fs);
    EXPECT_EQ(vars.MadeFolders.find("other"), std::string::npos);
    EXPECT_EQ(vars.SavePath, vars.TargetFolder + "site.com\\dir\\other.html");
}

TEST_F(MakeLocalPathTest, TextRulesOfThePath) {
    struct Case {
        std::string in;
        std::string out;
    } cases[] = {
        {vars.TargetFolder + "www.site.com/", vars.TargetFolder + "site.com\\"},
        {vars.TargetFolder + "site.com//a", vars.TargetFolder + "site.com\\a"},
        {vars.TargetFolder + "site.com///a", vars.TargetFolder + "site.com\\\\a"},
        {"http://www.site.com/a", "site.com\\a"},
        {"HTTP://site.com/a", "HTTP:\\site.com\\a"},  // only the exact lower-case scheme
    };
    for (auto& c : cases) {
        MakeLocalPath(c.in, vars, fs);
        EXPECT_EQ(c.in, c.out);
    }
}

TEST(MakeLocalPath, WwwGoesEvenFromTheTargetFolderName) {
    TempDir dir;
    CrawlVariables vars;
    vars.TargetFolder = dir.Backslashed() + "www.mirror\\";
    FileSystem fs(vars.TargetFolder, dir.Backslashed() + "program");
    std::string path = vars.TargetFolder + "site.com/a.html";
    MakeLocalPath(path, vars, fs);
    EXPECT_EQ(path, dir.Backslashed() + "mirror\\site.com\\a.html");
    // "mirror\" lies outside the target folder "www.mirror\": the guard refuses it.
    EXPECT_FALSE(NativeExists(dir.NativePath("mirror")));
}

TEST(MakeFolder, RecordsOnlyWhatItCreated) {
    TempDir dir;
    CrawlVariables vars;
    vars.TargetFolder = dir.Backslashed();
    FileSystem fs(vars.TargetFolder, dir.Backslashed() + "program");
    MakeFolder(dir.Backslashed() + "New", vars, fs);
    MakeFolder(dir.Backslashed() + "New", vars, fs);      // exists: not listed again
    MakeFolder(dir.Backslashed() + "a\\b\\c", vars, fs);  // parent missing: fails
    EXPECT_EQ(vars.MadeFolders, LCase(dir.Backslashed() + "New") + "*");
}

}  // namespace
}  // namespace vantorin

#include "output/LocalPath.h"

#include <gtest/gtest.h>

#include <tuple>

#include "platform/Text.h"
#include "tests/support/MirrorFixture.h"

namespace vantorin {
namespace {

using testing::MirrorFixture;
using testing::NativeExists;

// The character table itself is checked through the folder rules, which share it.
TEST(CleanFileName, AddsHtmlOnlyWithoutADot) {
    EXPECT_EQ(CleanFileName("a**b<c>"), "ab_c_.html");
    EXPECT_EQ(CleanFileName(""), ".html");
    EXPECT_EQ(CleanFileName("page.php?id=2&x=!"), "page.php_id=2_x=_");
}

TEST(TopLevel, OnlyFilesDirectlyInTheHostFolder) {
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"C:\\Websites\\site.com\\index.html", "site.com", true},
        {"C:\\Websites\\site.com\\dir\\a.html", "site.com", false},
        {"C:/Websites/SITE.com/a.html", "site.COM", true},
        // The character right after "host\" is skipped before the test.
        {"C:\\Websites\\site.com\\\\a.html", "site.com", true},
        // Host not in the path: the test reads from position key length + 1.
        {"C:\\other\\x.html", "site.com", true},
    };
    for (auto [path, host, top] : cases) EXPECT_EQ(IsTopLevelFile(path, host), top) << path;
}

TEST(MakeLocalPath, MapsAddressAndRecordsOnlyTheFoldersItMade) {
    MirrorFixture f;
    const std::string& t = f.vars.TargetFolder;
    std::string path = "  " + t + "www.site.com/dir/sub/page.html ";
    MakeLocalPath(path, f.vars, f.fs);
    EXPECT_EQ(path, t + "site.com\\dir\\sub\\page.html");
    // Root first, lower-cased; the existing target folder and a folder whose
    // parent is missing are not listed.
    const std::string base = LCase(t);
    MakeFolder(t + "a\\b", f.vars, f.fs);
    EXPECT_EQ(f.vars.MadeFolders,
              base + "site.com\\*" + base + "site.com\\dir\\*" + base + "site.com\\dir\\sub\\*");

    std::pair<std::string, std::string> cases[] = {
        {t + "site.com//a", t + "site.com\\a"},
        {t + "site.com///a", t + "site.com\\\\a"},
        {"http://www.site.com/a", "site.com\\a"},
        {"HTTP://site.com/a", "HTTP:\\site.com\\a"},  // only the exact lower-case scheme
    };
    for (auto& [in, out] : cases) {
        MakeLocalPath(in, f.vars, f.fs);
        EXPECT_EQ(in, out);
    }

    // Every "www." goes, also from the target folder's own name; the guard
    // then refuses the folder outside it.
    f.vars.TargetFolder = f.tmp.Backslashed() + "www.m\\";
    std::string www = f.vars.TargetFolder + "site.com/a.html";
    MakeLocalPath(www, f.vars, f.fs);
    EXPECT_EQ(www, f.tmp.Backslashed() + "m\\site.com\\a.html");
    EXPECT_FALSE(NativeExists(f.tmp.NativePath("m")));
}

}  // namespace
}  // namespace vantorin

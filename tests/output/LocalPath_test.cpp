#include "output/LocalPath.h"

#include <gtest/gtest.h>

#include <tuple>

#include "tests/support/MirrorFixture.h"

namespace vantorin {

// The character table itself is checked through the folder rules, which share it.
TEST(CleanFileName, AddsHtmlOnlyWithoutADot) {
    EXPECT_EQ(CleanFileName(""), ".html");  // a name with a dot is kept: every saved file's row
}

TEST(TopLevel, OnlyFilesDirectlyInTheHostFolder) {
    // The character right after "host\" is skipped before the test; with the
    // host not in the path, the test reads from position key length + 1.
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"C:/Websites/SITE.com/a.html", "site.COM", true},
        {"C:/Websites/site.com/dir/a.html", "site.com", false},
        {"C:\\Websites\\site.com\\\\a.html", "site.com", true},
        {"C:\\other\\x.html", "site.com", true}};
    for (auto [path, host, top] : cases) EXPECT_EQ(IsTopLevelFile(path, host), top) << path;
}

TEST(MakeLocalPath, MapsTheAddressToANativePathBelowTheTarget) {
    testing::MirrorFixture f;
    const std::string& t = f.m.targetFolder;
    // Trimmed; only the exact lower-case scheme goes; every "www." goes, also from the
    // target folder's own name.
    const std::pair<std::string, std::string> cases[] = {
        {"  " + t + "www.site.com/dir/sub/page.html ", t + "site.com\\dir\\sub\\page.html"},
        {t + "site.com///a", t + "site.com\\\\a"},
        {"http://www.site.com/a", "site.com\\a"},
        {"HTTP://site.com/a", "HTTP:\\site.com\\a"},
        {f.tmp.Backslashed() + "www.m\\site.com/a", f.tmp.Backslashed() + "m\\site.com\\a"}};
    for (const auto& [in, out] : cases) EXPECT_EQ(MakeLocalPath(in, f.files, f.m.madeFolders), out);
}

}  // namespace vantorin

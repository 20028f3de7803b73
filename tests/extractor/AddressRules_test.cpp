#include "extractor/AddressRules.h"

#include <gtest/gtest.h>

namespace vantorin {
namespace {

struct Row {
    const char* in;
    const char* out;
};

TEST(AddressRules, StripHttpDropsOneSchemeAndTurnsBackslashes) {
    const Row rows[] = {
        {" HTTP://Site.com\\a\\b.html", "Site.com/a/b.html"},
        {"www.site.com/x", "www.site.com/x"},
        {"http://http://site.com/b.html", "http://site.com/b.html"},
        {"site.com/http:\\\\x", "site.com/x"},
        {"http:/", "http:/"},
        {"", ""},
        {"   ", ""},
    };
    for (const auto& r : rows) EXPECT_EQ(StripHttp(r.in), r.out) << r.in;
}

TEST(AddressRules, UrlToPathPartRemovesEveryWww) {
    const Row rows[] = {
        {"http://www.site.com/dir/www.x.html", "site.com\\dir\\x.html"},
        {"HTTP://site.com/a", "site.com\\a"},
        {"site.com/ b /", "site.com\\ b \\"},
        {"  www. /x", "\\x"},
        {"", ""},
    };
    for (const auto& r : rows) EXPECT_EQ(UrlToPathPart(r.in), r.out) << r.in;
}

TEST(AddressRules, CollapseSlashesKeepsTheSchemeRoom) {
    const Row rows[] = {
        {"http://site.com//a///b", "http://site.com/a//b"},
        {"a//b//c//d", "a//b//c/d"},  // a doubled slash inside the first 7 survives
        {"http://", "http://"},
        {"http:// x//y ", "http://x/y"},
        {"", ""},
    };
    for (const auto& r : rows) EXPECT_EQ(CollapseSlashes(r.in), r.out) << r.in;
}

TEST(AddressRules, CutAtDelimiters) {
    const Row links[] = {
        {"page.html'>Home", "page.html"},
        {"a.html;jsessionid=1", "a.html"},
        {"a.html#top", "a.html"},
        {"a b", "a"},
        {"x}y", "x"},
        {"a?b/c\\d", "a?b/c\\d"},
        {"", ""},
        {"'", ""},
    };
    for (const auto& r : links) EXPECT_EQ(CutLinkAtDelimiter(r.in), r.out) << r.in;
    const Row hosts[] = {
        {"site.com/dir/", "site.com"},
        {"site.com?x", "site.com"},
        {"site.com\\a", "site.com"},
        {"site.com", "site.com"},
        {"a b", "a"},
        {"/x", ""},
    };
    for (const auto& r : hosts) EXPECT_EQ(CutHostAtDelimiter(r.in), r.out) << r.in;
}

TEST(AddressRules, DotDotResolutionIsAPlainReplace) {
    const Row once[] = {
        {"a/../b", "a/b"},
        {"a\\..\\b", "a/b"},
        {"a/b", "a/b"},
        {"/../", "/"},
    };
    for (const auto& r : once) EXPECT_EQ(CutDotDotOnce(r.in), r.out) << r.in;
    const Row resolved[] = {
        {"site.com/a/b/../c.html", "site.com/a/c.html"},
        {"site.com/a/b/../../c.html", "site.com/c.html"},
        {"site.com/b/x/b/../y", "site.com/x/y"},  // every "/b" goes
        {"site.com/bar/b/../y", "site.comar/y"},  // also from inside "/bar"
        {"site.com\\a\\b\\..\\c", "site.com/a/c"},
        {"site.com/../x.html", "site.com/x.html"},
        {"/../../../", "/"},
        {"a/./../b", "a./b"},
        {"no dots", "no dots"},
    };
    for (const auto& r : resolved) EXPECT_EQ(ResolveDotDot(r.in), r.out) << r.in;
}

TEST(AddressRules, ResolveDotDotEndsOnLongHostileInput) {
    std::string s = "site.com";
    for (int i = 0; i < 2000; ++i) s += "/..";
    s += "/x";
    std::string out = ResolveDotDot(s);
    EXPECT_EQ(out.find("/../"), std::string::npos);
}

TEST(AddressRules, FormatThousandsGroupsFromTheRight) {
    const Row rows[] = {
        {"123", "123"}, {"1234", "1,234"}, {"123456", "123,456"}, {"1234567", "1,234,567"},
        {" 12 ", "12"}, {"", ""},          {"ABCD", "a,bcd"},     {"1234567890", "1,234,567,890"},
    };
    for (const auto& r : rows) EXPECT_EQ(FormatThousands(r.in), r.out) << r.in;
}

TEST(AddressRules, ExtensionAndTrailingSlash) {
    const Row ext[] = {
        {"a/b.html", ".html"},
        {"a.php?x=1", ".php?x=1"},
        {"site.com/dir/file", ".com/dir/file"},
        {"noext", "noext"},
        {"", ""},
    };
    for (const auto& r : ext) EXPECT_EQ(GetExtension(r.in), r.out) << r.in;
    EXPECT_TRUE(EndsWithSlash("a\\"));
    EXPECT_TRUE(EndsWithSlash("a/"));
    EXPECT_FALSE(EndsWithSlash("a/ "));
    EXPECT_FALSE(EndsWithSlash("   "));
}

}  // namespace
}  // namespace vantorin

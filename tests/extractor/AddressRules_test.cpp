#include "extractor/AddressRules.h"

#include <gtest/gtest.h>

#include <tuple>

#include "text/Strings.h"

namespace vantorin {

TEST(AddressRules, EachRuleOnItsBoundaries) {
    using Rule = std::string (*)(std::string_view);
    const std::tuple<Rule, const char*, const char*> rows[] = {
        {StripHttp, " HTTP://Site.com\\a\\b.html", "Site.com/a/b.html"},
        {StripHttp, "http://http://site.com/b.html", "http://site.com/b.html"},
        {StripHttp, "site.com/http:\\\\x", "site.com/x"},
        {StripHttp, "http:/", "http:/"},
        {UrlToPathPart, "HTTP://site.com/ b /", "site.com\\ b \\"},
        {CollapseSlashes, "http://site.com//a///b", "http://site.com/a//b"},
        // A doubled slash inside the first 7 characters survives.
        {CollapseSlashes, "a//b//c//d", "a//b//c/d"},
        {CollapseSlashes, "http:// x//y ", "http://x/y"},
        {CutLinkAtDelimiter, "a.html;jsessionid=1", "a.html"},
        {CutLinkAtDelimiter, "a b#c}d", "a"},
        {CutLinkAtDelimiter, "a?b/c\\d", "a?b/c\\d"},
        {CutHostAtDelimiter, "site.com?x", "site.com"},
        {CutHostAtDelimiter, "site.com\\a/b", "site.com"},
        {ResolveDotDot, "site.com/b/x/b/../y", "site.com/x/y"},  // every "/b" goes
        {ResolveDotDot, "site.com/bar/b/../y", "site.comar/y"},  // also from inside "/bar"
        {ResolveDotDot, "site.com\\..\\x.html", "site.com/x.html"},
        {ResolveDotDot, "/../../../", "/"},
        {ResolveDotDot, "a/./../b", "a./b"},
        {GetExtension, "a.php?x=1", ".php?x=1"},
        {GetExtension, "site.com/dir/file", ".com/dir/file"},
        {GetExtension, "noext", "noext"},
    };
    for (auto [rule, in, out] : rows) EXPECT_EQ(rule(in), out) << in;

    const std::string deep = "site.com" + Replace(std::string(2000, '/'), "/", "/..");
    EXPECT_EQ(ResolveDotDot(deep + "/x").find("/../"), std::string::npos);
    EXPECT_TRUE(EndsWithSlash("a\\") && !EndsWithSlash("a/ ") && !EndsWithSlash("   "));
}

}  // namespace vantorin

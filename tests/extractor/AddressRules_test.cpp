#include "extractor/AddressRules.h"

#include <gtest/gtest.h>

#include <tuple>

namespace vantorin {
namespace {

TEST(AddressRules, EachRuleOnItsBoundaries) {
    using Rule = std::string (*)(std::string_view);
    const Rule strip = StripHttp, path = UrlToPathPart, collapse = CollapseSlashes,
               cutLink = CutLinkAtDelimiter, cutHost = CutHostAtDelimiter, resolve = ResolveDotDot,
               ext = GetExtension;
    const std::tuple<Rule, const char*, const char*> rows[] = {
        {strip, " HTTP://Site.com\\a\\b.html", "Site.com/a/b.html"},
        {strip, "http://http://site.com/b.html", "http://site.com/b.html"},
        {strip, "site.com/http:\\\\x", "site.com/x"},
        {strip, "http:/", "http:/"},
        {path, "http://www.site.com/dir/www.x.html", "site.com\\dir\\x.html"},
        {path, "HTTP://site.com/ b /", "site.com\\ b \\"},
        {collapse, "http://site.com//a///b", "http://site.com/a//b"},
        {collapse, "a//b//c//d", "a//b//c/d"},  // a doubled slash inside the first 7 survives
        {collapse, "http:// x//y ", "http://x/y"},
        {cutLink, "page.html'>Home", "page.html"},
        {cutLink, "a.html;jsessionid=1", "a.html"},
        {cutLink, "a b#c}d", "a"},
        {cutLink, "a?b/c\\d", "a?b/c\\d"},
        {cutHost, "site.com?x", "site.com"},
        {cutHost, "site.com\\a/b", "site.com"},
        {resolve, "site.com/a/b/../../c.html", "site.com/c.html"},
        {resolve, "site.com/b/x/b/../y", "site.com/x/y"},  // every "/b" goes
        {resolve, "site.com/bar/b/../y", "site.comar/y"},  // also from inside "/bar"
        {resolve, "site.com\\..\\x.html", "site.com/x.html"},
        {resolve, "/../../../", "/"},
        {resolve, "a/./../b", "a./b"},
        {ext, "a.php?x=1", ".php?x=1"},
        {ext, "site.com/dir/file", ".com/dir/file"},
        {ext, "noext", "noext"},
    };
    for (auto [rule, in, out] : rows) EXPECT_EQ(rule(in), out) << in;

    std::string deep = "site.com";
    for (int i = 0; i < 2000; ++i) deep += "/..";
    EXPECT_EQ(ResolveDotDot(deep + "/x").find("/../"), std::string::npos);
    EXPECT_TRUE(EndsWithSlash("a\\") && !EndsWithSlash("a/ ") && !EndsWithSlash("   "));
}

}  // namespace
}  // namespace vantorin

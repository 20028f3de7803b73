#include "extractor/LinkScanner.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "extractor/LinkRewrite.h"
#include "platform/Text.h"
#include "tests/support/MirrorFixture.h"
#include "tests/support/TempDir.h"

namespace vantorin {
namespace {

using testing::MirrorFixture;
using testing::NativeExists;

// The passes as the rows state them: one whole-text replacement after another.
std::string RewriteRowByRow(std::string text) {
    for (std::string_view row : kLinkSpellings) ReplaceIn(text, row, "href=");
    ReplaceIn(text, "\"", "'");
    ReplaceIn(text, "\r\n", "");
    ReplaceIn(text, "\n", "");
    ReplaceIn(text, "\r", "");
    for (std::string_view refresh : kRefreshSpellings) ReplaceIn(text, refresh, kRefreshLink);
    return text;
}

TEST(RewriteForScan, RowsApplyInTableOrder) {
    struct Case {
        const char* text;
        const char* expected;
    } cases[] = {
        {"a href = x", "a href= x"},  // row 1 consumes row 2's pattern
        {"A HREF= x", "A href= x"},   // row 4 before row 7
        {"<img src=a.gif>", "<imghref=a.gif>"},
        {"<img src = a.gif>", "<imghref= a.gif>"},
        {"<img SRC= a.gif>", "<imghref= a.gif>"},
        {"<img Src=a.gif>", "<img Src=a.gif>"},
        {"src=a.gif", "src=a.gif"},
        {"HrEf=x", "HrEf=x"},
        {"<td BackGround = 'b.gif'>", "<td href= 'b.gif'>"},
        {"<a href=\"x\"\r\n>y\rz\n", "<a href='x'>yz"},
        {"content=\"5; url=http://s.com/b\"", "content='5a href='http://http://s.com/b'"},
        {"a;\r\nURL=b", "aa href='http://b"},
        {"; Url=b", "; Url=b"},
        {"href = href = x", "href= href= x"},
    };
    for (const auto& c : cases) EXPECT_EQ(RewriteForScan(c.text), c.expected) << c.text;
}

// The walk-once rewrite must equal the row-by-row passes on any text, above
// all where spellings overlap, touch, or share their blanks and "=".
TEST(RewriteForScan, MatchesTheRowByRowPassesOnMixedText) {
    std::vector<std::string> pieces(kLinkSpellings.begin(), kLinkSpellings.end());
    for (const char* p : {"href",   "HREF", "Href", "src",  " SRC", "background", "BackGround",
                          "=",      " ",    "  ",   "\"",   "'",    "\r",         "\n",
                          "\r\n",   ";",    "; ",   "url=", "URL=", "url",        "a",
                          "x.html", "f",    "d",    "C",    "#"})
        pieces.emplace_back(p);
    for (std::string_view refresh : kRefreshSpellings) pieces.emplace_back(refresh);
    std::mt19937 random(20240607);
    std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
    std::uniform_int_distribution<int> length(0, 24);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (int n = length(random); n > 0; --n) text += pieces[pick(random)];
        ASSERT_EQ(RewriteForScan(text), RewriteRowByRow(text)) << '[' << text << ']';
    }
}

struct Page {
    const char* name;
    std::string html;
    std::vector<std::string> queued;
    std::vector<std::string> notTaken = {};
};

TEST(ExtractLinks, FindsMakesAbsoluteAndAdmitsEachLink) {
    const std::string a294(294, 'a');
    const std::string a295(295, 'a');
    const Page pages[] = {
        {"spaced quotes", "<a href = \"page.html\">", {"site.com/dir/page.html"}},
        {"fragments",
         "<a href=\"#top\">x</a> <a href=\"page.html#top\">",
         {"site.com/dir/page.html"}},
        {"skipped schemes",
         "<a href=\"https://site.com/a.html\"> <a href=\"mailto:me@site.com\"> "
         "<a href=\"ftp://site.com/x\"> <a href=\"irc://site.com/c\"> <a href='a.html?u=x@y'>",
         {}},
        {"root-relative from the page's folder",
         "<a href='/img/a.gif'>",
         {"site.com/dir/img/a.gif"}},
        {"doubled slashes", "<a href='http://site.com//x//y.html'>", {"site.com/x/y.html"}},
        {"backslashes", "<a href='sub\\x.html'>", {"site.com/dir/sub/x.html"}},
        {"img src, not Src", "<img src=\"a.gif\"><img Src=\"b.gif\">", {"site.com/dir/a.gif"}},
        {"meta refresh",
         "<meta http-equiv=\"refresh\" content=\"0; url=http://site.com/b.html\">",
         {"http://site.com/b.html"}},
        {"relative refresh names a host", "<meta content=\"0; url=b.html\">", {}},
        {"empty value", "<a href=\"\">", {"site.com/dir/index.html"}},
        {"off-site", "<a href=\"http://other.com/a.html\">", {}},
        {"value split over lines", "<a href=\"pa\r\nge.html\">", {"site.com/dir/page.html"}},
        {"window of 300: whole",
         "<a href='" + a294 + ".html'>",
         {"site.com/dir/" + a294 + ".html"}},
        {"window of 300: cut", "<a href='" + a295 + ".html'>", {"site.com/dir/" + a295 + ".htm"}},
        {"hrefs closer than 10", "href=ahref=b.html", {"site.com/dir/ahref=b.html"}},
        {"hrefs 9 apart", "href=a.hthref=b.html", {"site.com/dir/a.hthref=b.html"}},
        {"hrefs 10 apart",
         "href=a.htmhref=b.html",
         {"site.com/dir/a.htmhref=b.html", "site.com/dir/b.html"}},
        {"hrefs 11 apart",
         "href=a.html href=b.html",
         {"site.com/dir/a.html", "site.com/dir/b.html"}},
        {"duplicate", "<a href=a.html><a href=\"a.html\">", {"site.com/dir/a.html"}},
        {"unlisted type each time",
         "<a href=a.bmp><a href=a.bmp>",
         {},
         {"site.com/dir/a.bmp", "site.com/dir/a.bmp"}},
        {"no href", "<p>plain text with = and \"quotes\"</p>", {}},
    };
    for (const auto& page : pages) {
        MirrorFixture f;
        std::string text = page.html;
        std::string base = "http://site.com/dir";
        ExtractLinks(text, f.queue, base, f.notTaken, f.m);
        EXPECT_EQ(base, "http://site.com/dir/");
        EXPECT_EQ(f.queue.Items(), page.queued) << page.name;
        EXPECT_EQ(f.notTaken.Items(), page.notTaken) << page.name;
    }
}

TEST(ExtractLinks, LeavesTheTextAfterTheLastVisitedHrefAndYieldsAsDesigned) {
    struct Case {
        std::string html;
        std::string left;
        int yields;  // five per href visited, one more per link queued
    } cases[] = {
        {"<a href=\"x.html\">tail", "ml'>tail", 6},
        {"<a href=\"#top\">tail", "'>tail", 5},
        {"<a href=\"x.html\">1 <a href=\"#\">23", "3", 11},
        {"no links\r\nhere", "no linkshere", 0},
        {"href=", "", 6},  // an empty value is the folder's index.html
    };
    for (const auto& c : cases) {
        MirrorFixture f;
        int yields = 0;
        f.m.yield = [&] { ++yields; };
        std::string text = c.html;
        std::string base = "http://site.com/";
        ExtractLinks(text, f.queue, base, f.notTaken, f.m);
        EXPECT_EQ(text, c.left) << c.html;
        EXPECT_EQ(yields, c.yields) << c.html;
    }
}

TEST(ExtractLinks, HostilePageChangesNothingOutsideTheTargetFolder) {
    MirrorFixture f;
    const std::string marker =
        "escape-" + std::filesystem::path(f.tmp.Native()).filename().string();
    const auto before = f.OutsideTarget();
    std::string text =
        "<a href='http://../../x/site.com/a.html'>"
        "<a href='../../../../../../../../../../../../" +
        marker +
        "/site.com.html'>"
        "<a href='..\\..\\..\\..\\..\\..\\..\\..\\" +
        marker +
        "\\site.com.html'>"
        "<a href='/../../../../../../../../../../" +
        marker +
        "/x.html'>"
        "<a href='a/../../../../../" +
        marker + std::string(1, '\0') +
        "/../up/mirror/x.html'>"
        "<a href='\xE9\xFF/../../../../../../../../../" +
        marker + "/y.html'>";
    std::string base = "http://site.com/";
    ExtractLinks(text, f.queue, base, f.notTaken, f.m);
    EXPECT_FALSE(f.queue.Items().empty());
    EXPECT_EQ(f.OutsideTarget(), before);
    EXPECT_FALSE(NativeExists("/" + marker));
    EXPECT_FALSE(NativeExists((std::filesystem::temp_directory_path() / marker).string()));
    EXPECT_FALSE(NativeExists(f.tmp.NativePath(marker)));
}

}  // namespace
}  // namespace vantorin

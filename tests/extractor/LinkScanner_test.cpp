#include "extractor/LinkScanner.h"

#include <gtest/gtest.h>

#include <tuple>

#include "extractor/LinkRewrite.h"
#include "tests/support/MirrorFixture.h"

namespace vantorin::testing {

// Each spelling the scanner knows, in table order, as the rows leave it: an
// earlier row can take a later row's text ("href = " is met by "href =" first).
// A text may open with " =", which no spelling ends in.
TEST(RewriteForScan, RewritesEverySpellingAsTheRowsInTheirOrderDo) {
    const std::string text =
        " =|href =v|href = v|href=v|HREF=v|HREF = v|HREF =v|HREF= v|hRef=v|hRef = v|hRef =v"
        "|hRef= v|Href=v|Href = v|Href =v|Href= v|hREF=v|hREF = v|hREF =v|hREF= v|background =v"
        "|background=v|background = v|background= v|BACKGROUND =v|BACKGROUND=v|BACKGROUND = v"
        "|BACKGROUND= v|BackGround =v|BackGround=v|BackGround = v|BackGround= v| SRC=v| src=v"
        "| SRC =v| src =v| SRC = v| src = v| SRC= v| src= v|src=v|Src=v|; url=u|;url=u|; URL=u"
        "|;URL=u|\"q\"|a\r\nb\nc\rd";
    EXPECT_EQ(
        RewriteForScan(text),
        " =|href=v|href= v|href=v|href=v|href=v|href=v|href= v|href=v|href=v|href=v|href= v|href=v"
        "|href=v|href=v|href= v|href=v|href=v|href=v|href= v|href=v|href=v|href= v|href= v"
        "|href=v|href=v|href= v|href= v|href=v|href=v|href= v|href= v|href=v|href=v|href=v"
        "|href=v|href= v|href= v|href= v|href= v|src=v|Src=v|a href='http://u|a href='http://u"
        "|a href='http://u|a href='http://u|'q'|abcd");
}

TEST(ExtractLinks, FindsMakesAbsoluteAndAdmitsEachLink) {
    const std::string a294(294, 'a'), a295(295, 'a');
    const std::tuple<std::string, std::vector<std::string>, std::vector<std::string>> pages[] = {
        // Any link holding "@" or a skipped scheme goes.
        {"<a href='a.html?u=x@y'><a href=\"irc://site.com/c\">", {}, {}},
        {"<a href='http://site.com///img///t///y.html'>", {"site.com/img/t/y.html"}, {}},
        {"<a href='sub\\x.html'>", {"site.com/dir/sub/x.html"}, {}},
        {"<meta content=\"0; url=b.html\">", {}, {}},  // a relative refresh names a host
        {"<a href=\"\">", {"site.com/dir/index.html"}, {}},
        {"<a href=\"pa\r\nge.html\">", {"site.com/dir/page.html"}, {}},
        {"<a href='" + a294 + ".html'>", {"site.com/dir/" + a294 + ".html"}, {}},
        {"<a href='" + a295 + ".html'>", {"site.com/dir/" + a295 + ".htm"}, {}},  // 300 at most
        {"href=a.hthref=b.html", {"site.com/dir/a.hthref=b.html"}, {}},  // 9 apart: one link
        {"href=a.htmhref=b.html", {"site.com/dir/a.htmhref=b.html", "site.com/dir/b.html"}, {}},
        {"<a href=a.bmp><a href=a.bmp>", {}, {"site.com/dir/a.bmp", "site.com/dir/a.bmp"}}};
    for (const auto& [html, queued, notTaken] : pages) {
        MirrorFixture f;
        std::string text = html;
        RunToEnd(ExtractLinks(text, "http://site.com/dir", f.admission), f.loop);
        EXPECT_EQ(f.queue.Items(), queued) << html;
        EXPECT_EQ(f.notTaken.Items(), notTaken) << html;
    }
}

// Five turns of the event loop per href visited, one more per link queued;
// the text left starts ten characters into the last href.
TEST(ExtractLinks, LeavesTheTextAfterTheLastVisitedHrefAndWaitsFiveTurnsAnHref) {
    MirrorFixture f;
    int turns = 0;
    f.loop.betweenTurns = [&] { ++turns; };
    std::string text = "<a href=\"x.html\">1 <a href=\"#\">234";
    RunToEnd(ExtractLinks(text, "http://site.com/", f.admission), f.loop);
    EXPECT_EQ(std::tuple(text, turns), std::tuple("34", 11));
    std::string plain = "no link here";
    RunToEnd(ExtractLinks(plain, "http://site.com/", f.admission), f.loop);
    EXPECT_EQ(plain, "no link here");
}

}  // namespace vantorin::testing

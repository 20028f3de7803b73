#include "text/PageLinks.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vantorin {

// Which elements lead where is a row of the offline check's table; here the
// spellings of a refresh and the blanks around a link.
TEST(LinksOfHtml, ReadsRefreshTargetsAndTrimsBlanks) {
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"<meta http-equiv=' REFRESH ' content=\"1.5 , URL = 'b c.html' x\">", {"b c.html"}},
        {"<meta http-equiv=refresh content='0; \"d.html'>", {"d.html"}},
        {"<meta http-equiv=refresh content='0; e.html'>", {"e.html"}},
        {"<meta http-equiv=refresh content='0; url x'>", {"url x"}},
        {"<meta http-equiv=refresh content='3'><meta http-equiv=refresh><meta content='0;g'>"
         "<meta http-equiv=refresh content='url=f.html'>",
         {}},
        {"<a href=' \n h.html\t'></a><a href='  '></a><img src=i.gif>", {"h.html", "i.gif"}},
    };
    for (const auto& [html, links] : cases) EXPECT_EQ(LinksOfHtml(html), links) << html;
}

}  // namespace vantorin

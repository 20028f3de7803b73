#include "text/PageText.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace vantorin {

TEST(VisibleTextOfHtml, LaysTextOutAsInnerTextOfTheBody) {
    const std::pair<const char*, const char*> cases[] = {
        {"<body>a <b>bold</b>  and\n\t<i>it</i> </body>", "a bold and it"},
        {"<body>  lead and trail  </body>", "lead and trail"},
        {"<body>a<b> </b>b</body>", "a b"},
        {"<body><div>one</div><div>two</div></body>", "one\ntwo"},
        {"<body><p>one</p><p>two</p></body>", "one\n\ntwo"},
        {"<body>a<br>b<br><br>c</body>", "a\nb\n\nc"},
        {"<body>a <br> b</body>", "a\nb"},
        {"<body><ul><li>x</li><li>y</li></ul></body>", "x\ny"},
        {"<body>x<script>var a = '<b>no</b>';</script>y<style>p{}</style>z</body>", "xyz"},
        {"<body>a<noscript>no</noscript><template>no</template>b</body>", "ab"},
        {"<body>a<span hidden>no</span>b<!-- gone -->c</body>", "abc"},
        {"<body><pre>  keep\n   this </pre>after</body>", "  keep\n   this \nafter"},
        {"<body>&amp; &lt;tag&gt; &eacute;&nbsp;x</body>", "& <tag> \xE9\xA0x"},
        {"<body>&#8364; &#x4e2d;</body>", "\x80 ?"},
        {"<body>caf\xE9 na\xEFve</body>", "caf\xE9 na\xEFve"},
        {"<body>caf\xC3\xA9 \xF0\x9F\x98\x80</body>", "caf\xE9 ?"},  // UTF-8, a 4-byte one
        {"<body>a\x80\x9F\xA0z</body>", "a\x80\x9F\xA0z"},  // code page bytes at its bounds
        {"plain words <p>no html element", "plain words\n\nno html element"},
        {"<frameset><frame src=a.html></frameset>", ""},
        {"", ""},
    };
    for (auto [html, expected] : cases) EXPECT_EQ(VisibleTextOfHtml(html), expected) << html;
}

// Hostile markup must come back quickly and bounded; if a bound were missing
// these would run for minutes (quadratic nesting) or take gigabytes.
TEST(VisibleTextOfHtml, StaysBoundedOnHostileInput) {
    // `count` pieces, each made from its number.
    const auto repeated = [](int count, auto piece) {
        std::string html;
        for (int i = 0; i < count; ++i) html += piece(std::to_string(i));
        return html;
    };
    EXPECT_EQ(VisibleTextOfHtml(repeated(100000, [](auto) { return "<div>"; }) + "deep"), "deep");
    EXPECT_TRUE(VisibleTextOfHtml(repeated(60000, [](auto n) { return "<b id=" + n + ">x"; })) ==
                std::string(60000, 'x'));
    // Cut after 50000 tags.
    const std::string cut =
        VisibleTextOfHtml(repeated(200000, [](auto n) { return "<i a" + n + " b>x"; }));
    EXPECT_TRUE(cut == std::string(50000, 'x')) << cut.size();
    EXPECT_LE(VisibleTextOfHtml(repeated(400000, [](auto) { return "<p>x"; })).size(), 3u * 400000);
    EXPECT_EQ(VisibleTextOfHtml(std::string("<body>a\0b</body>", 16)).find('\0'),
              std::string::npos);
}

}  // namespace vantorin

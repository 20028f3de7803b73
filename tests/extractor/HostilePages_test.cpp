#include <gtest/gtest.h>

#include <deque>
#include <random>
#include <string>
#include <vector>

#include "extractor/LinkScanner.h"
#include "output/SaveFile.h"
#include "tests/support/MirrorFixture.h"

namespace vantorin::testing {

// Text of `most` pieces at most, drawn from pieces of hostile addresses: every
// way a link may climb out of the mirror (".." in both slashes, "..www." which
// becomes ".." once "www." is cut, a host's "/.."), absolute and drive paths,
// NUL and high bytes, quotes and link spellings that end a link early, and
// very long names.
static std::string Hostile(std::mt19937& random, int most) {
    // clang-format off
    static const std::vector<std::string> pieces = {
        "../", "..\\", "..www./", "..www.\\", "www.", ".com/../", "/", "\\", "//", "%2e%2e/", ".",
        "..", std::string(1, '\0'), "\xff", "\xe9\xe8", "?x=1&y=..", "#", "'", "\"", ">", " ",
        "href=", " src=", "; url=", "http://", "http://site.com/", "http://www.site.com/",
        "http:\\\\", "C:\\", "/etc/", "prog/", "x.htm", "index.html", ".php",
        std::string(300, 'n'), std::string(5000, 'l')};
    // clang-format on
    std::string text;
    for (int n = static_cast<int>(random() % static_cast<unsigned>(most)) + 1; n > 0; --n)
        text += pieces[random() % pieces.size()];
    return text;
}

// A thousand seeded hostile pages saved under hostile names and scanned for
// hostile links, against a real folder: nothing is made, changed or deleted
// outside the target folder.
TEST(HostilePages, ChangeNothingOutsideTheTargetFolder) {
    MirrorFixture f;
    const std::string mirror = f.tmp.NativePath("up/mirror");
    const auto before = ListTreeExcept(f.tmp.Native(), mirror);
    std::mt19937 random(20261126);
    std::int32_t filesDone = 0;
    std::deque<std::string> texts;  // each stays where it is while its scan runs
    Jobs jobs;
    for (int page = 0; page < 1000; ++page) {
        std::string html = "H\r\n\r\n" + Hostile(random, 4);
        for (int link = 0; link < 4; ++link) html += "<a href='" + Hostile(random, 6) + "'>";
        jobs.Start(Ignoring(
            SaveFile(html, "\\site.com/" + Hostile(random, 5), "www.site.com", f.m, filesDone)));
        jobs.Start(ExtractLinks(texts.emplace_back(html), "http://site.com/" + Hostile(random, 3),
                                f.admission));
    }
    f.loop.RunUntilIdle();
    EXPECT_EQ(std::pair(filesDone, jobs.Count()), std::pair(1000, std::size_t{0}));
    EXPECT_EQ(ListTreeExcept(f.tmp.Native(), mirror), before);
}

}  // namespace vantorin::testing

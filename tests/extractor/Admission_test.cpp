#include "extractor/Admission.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/Text.h"
#include "tests/support/MirrorFixture.h"
#include "tests/support/TempDir.h"

namespace vantorin {
namespace {

using testing::MirrorFixture;
using testing::NativeExists;
using testing::ReadNativeFile;
using testing::WriteNativeFile;

const std::string kPlaceholder =
    "This file is queued to be downloaded, or did not download correctly.\r\n";

TEST(AdmitLink, RoutesEachLinkToTheQueueTheNotTakenListOrNowhere) {
    struct Case {
        const char* link;
        const char* queued;       // "" when not queued
        const char* notTaken;     // "" when not listed
        const char* placeholder;  // relative to the target folder; "" when none
    } cases[] = {
        {"http://site.com/dir/page.html", "site.com/dir/page.html", "",
         "site.com/dir/page.html.tmp"},
        {"HTTP://site.com/a.html", "site.com/a.html", "", "site.com/a.html.tmp"},
        {"http://SITE.COM/B.HTML", "SITE.COM/B.HTML", "", "SITE.COM/B.HTML.tmp"},
        {"http://www.site.com/x.html", "www.site.com/x.html", "", "site.com/x.html.tmp"},
        {"http://other.com/x.html", "", "", ""},
        // The same-site test is a plain substring test.
        {"http://other.com/?from=site.com", "", "other.com/?from=site.com", ""},
        {"http://site.com/dir/", "site.com/dir/index.html", "", "site.com/dir/index.html.tmp"},
        {"http://site.com/pic.bmp", "", "site.com/pic.bmp", ""},
        {"http://site.com/dir/file", "", "site.com/dir/file", ""},
        // Query pages are taken whatever their type; the "?" goes after the placeholder is named.
        {"http://site.com/list.php?id=3", "site.com/list.php?id=3", "",
         "site.com/list.php_id=3.tmp"},
        {"http://site.com/list.php?", "site.com/list.php", "", "site.com/list.php_.tmp"},
        {"http://site.com/list.asp?id=3", "", "site.com/list.asp?id=3", ""},
        {"http://site.com/../x.html", "", "", ""},
        {"http://site.com/a/../../x.html", "site.com/x.html", "", "x.html.tmp"},
        {"http://site.org/../x.html", "", "", ""},
        {"http://site.com/./a.html", "site.com/a.html", "", "site.com/a.html.tmp"},
        // A scheme written with a backslash is mended after the scheme test.
        {"http:\\site.com\\sub\\a.gif", "http://site.com/sub/a.gif", "", "site.com/sub/a.gif.tmp"},
        // A doubled scheme from a meta refresh keeps one scheme in the queue.
        {"http://http:/site.com/b.html", "http://site.com/b.html", "", "http:/site.com/b.html.tmp"},
        {"http://site.com/a b.html ", "site.com/a b.html", "", "site.com/a b.html.tmp"},
    };
    for (const auto& c : cases) {
        MirrorFixture f;
        AdmitLink(c.link, f.queue, f.notTaken, f.m);
        SCOPED_TRACE(c.link);
        std::vector<std::string> queued, notTaken;
        if (*c.queued) queued.push_back(c.queued);
        if (*c.notTaken) notTaken.push_back(c.notTaken);
        EXPECT_EQ(f.queue.Items(), queued);
        EXPECT_EQ(f.notTaken.Items(), notTaken);
        if (*c.placeholder) {
            EXPECT_EQ(ReadNativeFile(f.Target(c.placeholder)), kPlaceholder);
        }
        EXPECT_EQ(ReadNativeFile(f.Target("log.txt")),
                  *c.queued ? std::string(c.queued) + "\r\n" : std::string());
        if (!*c.queued) {
            EXPECT_FALSE(NativeExists(f.Target("site.com")));
        }
    }
}

TEST(AdmitLink, KnownFilesDropTheLinkAndUnlistedTypesAreListedEveryTime) {
    for (const char* existing :
         {"site.com/a.html", "site.com/a.html.html", "site.com/a.html.tmp"}) {
        MirrorFixture f;
        WriteNativeFile(f.Target(existing), "x");
        AdmitLink("http://site.com/a.html", f.queue, f.notTaken, f.m);
        EXPECT_TRUE(f.queue.Items().empty()) << existing;
        EXPECT_FALSE(NativeExists(f.Target("log.txt"))) << existing;
    }

    MirrorFixture f;
    for (int i = 0; i < 2; ++i) {
        AdmitLink("http://site.com/a.html", f.queue, f.notTaken, f.m);
        AdmitLink("http://site.com/pic.bmp", f.queue, f.notTaken, f.m);
    }
    EXPECT_EQ(f.queue.Items(), std::vector<std::string>{"site.com/a.html"});
    EXPECT_EQ(f.notTaken.Items(),
              (std::vector<std::string>{"site.com/pic.bmp", "site.com/pic.bmp"}));
    EXPECT_EQ(ReadNativeFile(f.Target("log.txt")), "site.com/a.html\r\n");
}

TEST(AdmitLink, DotDotIsResolvedRecordedAndTheDotDotPlaceholderKept) {
    MirrorFixture f;
    int yields = 0;
    f.m.yield = [&] { ++yields; };
    AdmitLink("http://site.com/a/b/../c.html", f.queue, f.notTaken, f.m);
    EXPECT_EQ(f.queue.Items(), std::vector<std::string>{"site.com/a/c.html"});
    EXPECT_EQ(ReadNativeFile(f.Target("transdd.txt")),
              "site.com/a/b/../c.html\r\nsite.com/a/c.html\r\n\r\n");
    // Named from the unresolved link: folder b is made on the way to it.
    EXPECT_TRUE(std::filesystem::is_directory(f.Target("site.com/a/b")));
    EXPECT_EQ(ReadNativeFile(f.Target("site.com/a/c.html.tmp")), kPlaceholder);
    EXPECT_EQ(ReadNativeFile(f.Target("log.txt")), "site.com/a/c.html\r\n");
    EXPECT_EQ(yields, 1);
}

TEST(AdmitLink, KeywordFiltersDropWithoutTrace) {
    struct Case {
        const char* filter;
        int index;
        const char* link;
        bool dropped;
    } cases[] = {
        {"ads", 1, "http://site.com/ads/x.gif", true},
        {"ads", 1, "http://site.com/loads.html", true},
        {" ADS ", 100, "http://site.com/Loads.html", true},
        {"ads", 1, "http://site.com/news.html", false},
        {"   ", 5, "http://site.com/news.html", false},
        // Filters see the link after its "/../" is resolved.
        {"b/..", 3, "http://site.com/a/b/../c.html", false},
    };
    for (const auto& c : cases) {
        MirrorFixture f;
        f.vars.KeywordFilters[static_cast<std::size_t>(c.index)] = c.filter;
        AdmitLink(c.link, f.queue, f.notTaken, f.m);
        EXPECT_EQ(f.queue.Items().empty(), c.dropped) << c.link;
        EXPECT_EQ(NativeExists(f.Target("log.txt")), !c.dropped) << c.link;
    }
}

TEST(AdmitLink, HostileLinksChangeNothingOutsideTheTargetFolder) {
    MirrorFixture f;
    const std::string marker =
        "escape-" + std::filesystem::path(f.tmp.Native()).filename().string();
    const auto before = f.OutsideTarget();
    const std::string nul(1, '\0');
    const std::string deep = "../../../../../../../../../../../../../../";
    const std::string links[] = {
        "http://../../x/site.com/a.html",
        "http://../" + marker + "/site.com.html",
        "http://site.com/x/" + deep + marker + "/site.com.html",
        "http:\\site.com\\x\\" + Replace(deep, "/", "\\") + marker + "\\a.html",
        "http://site.com\\..\\..\\" + marker + "\\a.html",
        "/" + marker + "/site.com.html",
        "http:///" + marker + "/site.com/a.html",
        "site.com/a" + nul + "/" + deep + marker + "/x.html",
        "site.com" + nul + "/../../" + marker + ".html",
        "site.com/a/../../../../" + marker + nul + "/../up/mirror/x.html",
        "site.com/\xE9\xFF\x80/" + deep + marker + "/b.html",
        "site.com/~/..../" + marker + "/c.html",
    };
    for (const auto& link : links) AdmitLink(link, f.queue, f.notTaken, f.m);
    EXPECT_EQ(f.OutsideTarget(), before);
    EXPECT_FALSE(NativeExists("/" + marker));
    EXPECT_FALSE(NativeExists((std::filesystem::temp_directory_path() / marker).string()));
    EXPECT_FALSE(NativeExists(f.tmp.NativePath(marker)));
}

}  // namespace
}  // namespace vantorin

#include "extractor/Admission.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>

#include "tests/support/MirrorFixture.h"
#include "text/Strings.h"

namespace vantorin::testing {

const std::string kPlaceholder =
    "This file is queued to be downloaded, or did not download correctly.\r\n";

// Each link goes to the queue (with a placeholder and a log line), to the
// links not taken, or nowhere.
TEST(AdmitLink, RoutesEachLinkToTheQueueTheNotTakenListOrNowhere) {
    const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
        // link, queued, not taken, placeholder below the target folder
        {"HTTP://SITE.COM/B.HTML", "SITE.COM/B.HTML", "", "SITE.COM/B.HTML.tmp"},
        {"http://http://site.com/y.html", "site.com/y.html", "", "site.com/y.html.tmp"},  // both go
        // The same-site test is a plain substring test.
        {"http://other.com/?from=site.com", "", "other.com/?from=site.com", ""},
        {"http://site.com/dir/file", "", "site.com/dir/file", ""},
        {"http://site.com\\dir\\", "site.com/dir/index.html", "", "site.com/dir/index.html.tmp"},
        // Query pages are taken whatever their type; the "?" goes after the placeholder is named.
        {"http://site.com/a.php?", "site.com/a.php", "", "site.com/a.php_.tmp"},
        {"http://site.com/a.asp?id=3", "", "site.com/a.asp?id=3", ""},
        {"http://site.com/../x.html", "", "", ""},
        // The placeholder is named from the link before its "/../" is resolved.
        {"http://site.com/a/../../x.html", "site.com/x.html", "", "x.html.tmp"},
        {"http://site.com/./a.html", "site.com/a.html", "", "site.com/a.html.tmp"},
        // A scheme written with a backslash is mended after the scheme test.
        {"http:\\site.com\\sub\\a.gif", "http://site.com/sub/a.gif", "", "site.com/sub/a.gif.tmp"}};
    using enum Admitted;
    for (auto [link, queued, other, placeholder] : cases) {
        SCOPED_TRACE(link);
        MirrorFixture f;
        EXPECT_EQ(AdmitLink(link, f.admission), *queued ? Queued : (*other ? NotTaken : Dropped));
        EXPECT_EQ(std::tuple(f.queue.At(0), f.notTaken.At(0)), std::tuple(queued, other));
        EXPECT_LE(f.queue.Count() + f.notTaken.Count(), 1u);
        EXPECT_TRUE(*queued || std::filesystem::is_empty(f.Target("")));  // else no trace at all
        if (*queued) {
            EXPECT_EQ(ReadNativeFile(f.Target(placeholder)), kPlaceholder);
            EXPECT_EQ(ReadNativeFile(f.Target("log.txt")), queued + std::string("\r\n"));
            // Only a link climbing with "/../" is recorded in transdd.txt, before and after
            // resolving.
            const std::string climbed = std::string(link + 7) + "\r\n" + queued + "\r\n\r\n";
            EXPECT_EQ(ReadNativeFile(f.Target("transdd.txt")),
                      Contains(link, "/../") ? climbed : "");
        }
    }
}

}  // namespace vantorin::testing

#include "app/StartHints.h"

#include <gtest/gtest.h>

namespace vantorin {
namespace {

TEST(StartHints, NameWhatTheAddressWillNotDo) {
    const std::string https = "starts with \"https://\"";
    const std::string local = "is a local path";
    const std::string port = "names a port";
    const std::string empty = "is empty";
    const std::pair<std::string, std::string> cases[] = {
        {"www.a.test/x.html", ""},
        {"http://www.a.test/", ""},
        {"  ", empty},
        {"HTTPS://www.a.test/", https},
        {"https://www.a.test:443/", https},
        {"/home/me/site", local},
        {"\\\\server\\share", local},
        {"File:///tmp/x.html", local},
        {"z:\\sites", local},  // the drive letter's bounds
        {"a:/x", local},
        {"A:", local},
        {"Z:", local},
        {"a:80", port},
        {"www.a.test:8080/x:y", port},
        {"http://www.a.test:81", port},
        {"www.a.test/page:1.html", ""},  // a colon in the path names no port
    };
    for (const auto& [address, wanted] : cases) {
        const auto hints = AddressHints(address);
        if (wanted.empty()) {
            EXPECT_TRUE(hints.empty()) << address;
            continue;
        }
        ASSERT_EQ(hints.size(), 1u) << address;
        EXPECT_NE(hints[0].find(wanted), std::string::npos) << address << ": " << hints[0];
    }
    EXPECT_EQ(AddressHints("www.a.test:8080/x")[0],
              "Hint: the address names a port (\":8080\"); the port is always 80, and "
              "\"www.a.test:8080\" is taken as the host name.");
}

TEST(StartHints, CountPlaceholdersLeftBehind) {
    EXPECT_EQ(PlaceholderHint(0), "");
    EXPECT_EQ(PlaceholderHint(1),
              "Hint: the folder holds 1 placeholder (\".tmp\") from an earlier run that did not "
              "finish; their pages count as already queued and will be skipped. Choose a new "
              "folder to get them.");
    EXPECT_NE(PlaceholderHint(1234).find("holds 1,234 placeholders"), std::string::npos);
}

}  // namespace
}  // namespace vantorin

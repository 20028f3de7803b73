#include "app/StartHints.h"

#include <gtest/gtest.h>

namespace vantorin {
namespace {

TEST(StartHints, NameWhatTheAddressWillNotDoAndThePlaceholdersLeftBehind) {
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        // A colon in the path names no port.
        {"", {"www.a.test/x.html", "http://www.a.test/", "www.a.test/page:1.html"}},
        {"is empty", {"  "}},
        {"starts with \"https://\"", {"HTTPS://www.a.test/", "https://www.a.test:443/"}},
        // A drive letter's bounds, with and without a path.
        {"is a local path",
         {"/home/me/site", "\\\\server\\share", "File:///tmp/x.html", "z:\\sites", "a:/x",
          "A:", "Z:"}},
        {"names a port", {"a:80", "www.a.test:8080/x:y", "http://www.a.test:81"}},
    };
    for (const auto& [wanted, addresses] : cases) {
        for (const std::string& address : addresses) {
            const auto hints = AddressHints(address);
            EXPECT_EQ(hints.size(), wanted.empty() ? 0u : 1u) << address;
            EXPECT_NE((hints.empty() ? "" : hints[0]).find(wanted), std::string::npos) << address;
        }
    }
    EXPECT_EQ(AddressHints("www.a.test:8080/x")[0],
              "Hint: the address names a port (\":8080\"); the port is always 80, and "
              "\"www.a.test:8080\" is taken as the host name.");
    EXPECT_EQ(PlaceholderHint(0), "");
    EXPECT_EQ(PlaceholderHint(1),
              "Hint: the folder holds 1 placeholder (\".tmp\") from an earlier run that did not "
              "finish; their pages count as already queued and will be skipped. Choose a new "
              "folder to get them.");
    EXPECT_NE(PlaceholderHint(1234).find("holds 1,234 placeholders"), std::string::npos);
}

}  // namespace
}  // namespace vantorin

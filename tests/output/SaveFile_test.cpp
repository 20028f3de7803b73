#include "output/SaveFile.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>

#include "tests/support/MirrorFixture.h"
#include "text/Strings.h"

namespace vantorin::testing {
namespace {

struct Saver : MirrorFixture {
    std::int32_t filesDone = 0;

    SavedFile Save(std::string received, std::string address, std::string host = "www.site.com") {
        return RunToEnd(SaveFile(received, std::move(address), host, m, filesDone), loop);
    }
    // The body of a page saved at address `at` (a binary name, so that only the
    // rewrite rules act on it), without the CR LF every write appends.
    std::string Rewritten(std::string body, std::string at, std::string host = "www.site.com") {
        Save("H\r\n\r\n" + body, at, host);
        return Replace(ReadNativeFile(Target(Replace(at.substr(1), "www.", ""))), "\r\n", "");
    }
};

// A server's whole answer "cancel", blanks around it and in any case, is
// neither saved nor counted (content ""); anything else is.
TEST(SaveFile, StripsTheHeaderNamesTheFileAndDoublesLineEnds) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    // received, address, saved as (when not the address), content
    const std::tuple<std::string, const char*, const char*, std::string> cases[] = {
        {"abcdef", "site.com/a.txt", "", "def\r\n"},  // no blank line: three characters lost
        {"H\r\n\r\nx", "site.com/dir/.html", "site.com/dir/index.html", "x\r\n"},
        {"H\r\n\r\nx\ny", "site.com/a.PHP", "", "x\ny\r\n"},
        {"H\r\n\r\nx", "site.com/x.html/b.php", "", "x\r\n"},
        {"H\r\n\r\na\r\nb\nc\rd", "site.com/p.htm", "", "a\r\n\r\n\nb\r\n\nc\r\nd\r\n"},
        {"H\r\n\r\n", "site.com/empty.gif", "", "\r\n"},
        {"H\r\n\r\n" + bytes, "site.com/img/b.gif", "", bytes + "\r\n"},
        {"  CanCel ", "site.com/c.html", "", ""},
        {"cancel!", "site.com/c.html", "", "cel!\r\n"},
        {"   ", "site.com/c.html", "", "\r\n"}};
    for (const auto& [received, address, savedAs, content] : cases) {
        SCOPED_TRACE(address);
        Saver s;
        s.Save(received, std::string("\\") + address);
        const std::string file = *savedAs ? savedAs : address;
        const bool saved = !content.empty();
        EXPECT_EQ(ReadNativeFile(s.Target(file)), content);
        EXPECT_EQ(s.filesDone, saved ? 1 : 0);
        // Only pages and text files are recorded for the search.
        EXPECT_EQ(NativeExists(s.Target("_SearchData/site.com.txt")),
                  saved && (Contains(file, ".htm") || Contains(file, ".txt")));
    }
}

TEST(SaveFile, RewritesLinksAndScriptWords) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"x",
         "'a.php' \"a.php\" <a.php> 'a.asp' \"a.asp\" <a.asp> <applet code=x><script src=a.js>",
         "'a.php.html' \"a.php.html\" <a.php.html> 'a.asp.html' \"a.asp.html\" <a.asp.html> "
         "< code=x>< !-- script src=a.js>"},
        {"x", "a.php?i=2 A.PHP?i=3 a.asp?i=2 a.Php?i=3", "a.php_i=2 A.PHP_i=3 a.asp?i=2 a.Php?i=3"},
        // Absolute links to the connection's own host become relative, with and without "www.".
        {"site.com/", "<a href=\"http://www.site.com/x\">", "<a href=\"x\">"},
        {" site.com ", "http://site.com/x http://other.com/y", "x http://other.com/y"},
        {"site.com", "http://site.com http://site.comb/x", "http://site.com http://site.comb/x"},
        {"", "http://a.com/x http://www.b.org/y", "a.com/x www.b.org/y"},
        // An upper-case scheme is kept, so no "www." form is made.
        {"HTTP://site.com", "HTTP://site.com/x http://www.site.com/y", "x http://www.site.com/y"}};
    for (auto [host, in, out] : cases)
        EXPECT_EQ(Saver().Rewritten(in, "\\site.com/dir/p.gif", host), out) << in;
}

TEST(SaveFile, FlattensClimbingLinksOnTopLevelPagesOnly) {
    const std::string in =
        "href=\"../a\" href =\"../b\" href = \"../c\" href= \"../d\" href='../e' href ='../f' "
        "href = '../g' href= '../h' href=\"../../i\" src=\"../j\"";
    EXPECT_EQ(Saver().Rewritten(in, "\\www.site.com/p.gif"),
              "href=\"a\" href =\"b\" href = \"c\" href= \"d\" href=\"e' href =\"f' "
              "href = \"g' href =\"h' href=\"../i\" src=\"../j\"");
    EXPECT_EQ(Saver().Rewritten(in, "\\site.com/dir/p.gif"), in);
}

}  // namespace
}  // namespace vantorin::testing

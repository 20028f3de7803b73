#include "output/SaveFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>

#include <unistd.h>

#include "platform/Text.h"
#include "tests/support/MirrorFixture.h"

namespace vantorin {
namespace {

using testing::NativeExists;
using testing::ReadNativeFile;
using testing::WriteNativeFile;

constexpr const char* kHeader = "HTTP/1.0 200 OK\r\nContent-Type: text/html\r\n\r\n";

struct Saver : testing::MirrorFixture {
    std::int32_t filesDone = 0;

    void Save(const std::string& received, std::string address,
              const std::string& slotHost = "www.site.com") {
        SaveFile(received, address, slotHost, m, filesDone);
    }
    // The body of a page saved at `address` (a binary name, so that only the
    // rewrite rules act on it), without the CR LF every write appends.
    std::string Rewritten(const std::string& body, const std::string& address,
                          const std::string& slotHost = "www.site.com") {
        Save(kHeader + body, address, slotHost);
        std::string saved = ReadNativeFile(Target(Replace(address.substr(1), "www.", "")));
        return saved.size() >= 2 ? saved.substr(0, saved.size() - 2) : "<nothing written>";
    }
};

TEST(SaveFile, StripsTheHeaderNamesTheFileAndDoublesLineEnds) {
    struct Case {
        const char* received;
        const char* address;
        const char* file;
        const char* content;
    } cases[] = {
        {"HTTP/1.0 200 OK\r\nA: b\r\n\r\nbody", "\\www.site.com/", "site.com/index.html",
         "body\r\n"},
        {"abcdef", "\\site.com/a.bin", "site.com/a.bin", "def\r\n"},  // no blank line
        {"H\r\n\r\nx", "\\site.com/dir/.html", "site.com/dir/index.html", "x\r\n"},
        {"H\r\n\r\nx", "\\site.com/a.php?x=1&y=2", "site.com/a.php_x=1_y=2.html", "x\r\n"},
        {"H\r\n\r\nx", "\\site.com/shop/cart.asp", "site.com/shop/cart.asp.html", "x\r\n"},
        {"H\r\n\r\nx\ny", "\\site.com/a.PHP", "site.com/a.PHP", "x\ny\r\n"},
        {"H\r\n\r\nx", "\\site.com/x.html/b.php", "site.com/x.html/b.php", "x\r\n"},
        {"H\r\n\r\na\r\nb\nc\rd", "\\site.com/p.htm", "site.com/p.htm",
         "a\r\n\r\n\nb\r\n\nc\r\nd\r\n"},
        {"H\r\n\r\na\r\nb\nc\rd", "\\site.com/p.gif", "site.com/p.gif", "a\r\nb\nc\rd\r\n"},
        {"H\r\n\r\n", "\\site.com/empty.gif", "site.com/empty.gif", "\r\n"},
    };
    for (const auto& c : cases) {
        Saver s;
        s.Save(c.received, c.address);
        EXPECT_EQ(ReadNativeFile(s.Target(c.file)), c.content) << c.address;
        EXPECT_EQ(s.filesDone, 1) << c.address;
    }
}

TEST(SaveFile, RewritesDynamicLinksAndScriptWords) {
    struct Case {
        const char* in;
        const char* out;
    } cases[] = {
        {"'a.php' \"a.php\" <a.php>", "'a.php.html' \"a.php.html\" <a.php.html>"},
        {"'a.asp' \"a.asp\" <a.asp>", "'a.asp.html' \"a.asp.html\" <a.asp.html>"},
        {"a.php?id=2 A.PHP?id=3", "a.php_id=2 A.PHP_id=3"},
        {"a.asp?id=2 a.Php?id=3", "a.asp?id=2 a.Php?id=3"},
        {"a.php?id=2\"", "a.php_id=2\""},
        {"<applet code=x>", "< code=x>"},
        {"<script src=a.js></script>", "< !-- script src=a.js></script>"},
    };
    for (const auto& c : cases) {
        Saver s;
        EXPECT_EQ(s.Rewritten(c.in, "\\site.com/sub/p.gif"), c.out) << c.in;
    }
}

TEST(SaveFile, FlattensClimbingLinksOnTopLevelPagesOnly) {
    struct Case {
        const char* in;
        const char* top;
    } cases[] = {
        {"href=\"../x\"", "href=\"x\""},       {"href =\"../x\"", "href =\"x\""},
        {"href = \"../x\"", "href = \"x\""},   {"href= \"../x\"", "href= \"x\""},
        {"href='../x'", "href=\"x'"},          {"href ='../x'", "href =\"x'"},
        {"href = '../x'", "href = \"x'"},      {"href= '../x'", "href =\"x'"},
        {"href=\"../../x\"", "href=\"../x\""}, {"src=\"../x\"", "src=\"../x\""},
    };
    for (const auto& c : cases) {
        Saver top;
        EXPECT_EQ(top.Rewritten(c.in, "\\www.site.com/p.gif"), c.top) << c.in;
        Saver sub;
        EXPECT_EQ(sub.Rewritten(c.in, "\\site.com/dir/p.gif"), c.in) << c.in;
    }
}

TEST(SaveFile, RemovesAbsoluteLinksToTheSlotsOwnHost) {
    struct Case {
        const char* slotHost;
        const char* in;
        const char* out;
    } cases[] = {
        {"www.site.com", "http://site.com/a/b.html", "a/b.html"},
        {"site.com", "http://www.site.com/a/b.html", "a/b.html"},
        {"site.com/", "<a href=\"http://site.com/x\">", "<a href=\"x\">"},
        {"http://site.com", "http://site.com/x", "x"},
        {" site.com ", "http://site.com/x http://other.com/y", "x http://other.com/y"},
        {"site.com", "http://site.com", "http://site.com"},
        {"site.com", "http://site.community/x", "http://site.community/x"},
        {"", "http://a.com/x http://www.b.org/y", "a.com/x www.b.org/y"},
        // An upper-case scheme is kept, so no "www." form is made.
        {"HTTP://site.com", "HTTP://site.com/x http://www.site.com/y", "x http://www.site.com/y"},
    };
    for (const auto& c : cases) {
        Saver s;
        EXPECT_EQ(s.Rewritten(c.in, "\\site.com/dir/p.gif", c.slotHost), c.out) << c.slotHost;
    }
}

TEST(SaveFile, CancelWritesNothingAndCountsNothing) {
    for (const char* word : {"cancel", " CANCEL ", "Cancel"}) {
        Saver s;
        s.Save(word, "\\site.com/a.html");
        EXPECT_FALSE(NativeExists(s.Target("site.com"))) << word;
        EXPECT_EQ(s.filesDone, 0) << word;
    }
    Saver s;
    s.Save("cancelled", "\\site.com/a.gif");
    EXPECT_EQ(ReadNativeFile(s.Target("site.com/a.gif")), "celled\r\n");
}

// The timeout path names the file " \ host/path": the folder gets a leading
// blank that the folder maker trims away, so the text lands only where such a
// folder already exists (and loses three characters, having no header).
TEST(SaveFile, TimeoutNameWithItsLeadingBlank) {
    const std::string timeout = "Unable to download this file. (Timeout)";
    Saver s;
    s.Save(timeout, " \\ www.site.com/a.gif");
    EXPECT_FALSE(NativeExists(s.Target("site.com/a.gif")));
    EXPECT_FALSE(NativeExists(s.Target(" site.com/a.gif")));
    EXPECT_EQ(s.filesDone, 1);

    std::filesystem::create_directories(s.Target(" site.com"));
    s.Save(timeout, " \\ www.site.com/a.gif");
    EXPECT_EQ(ReadNativeFile(s.Target(" site.com/a.gif")), timeout.substr(3) + "\r\n");
    EXPECT_EQ(s.filesDone, 2);
}

TEST(SaveFile, DeletesThePlaceholderUnderTheNameBeforeRenaming) {
    Saver s;
    WriteNativeFile(s.Target("site.com/a.php_x=1.tmp"), "queued");
    WriteNativeFile(s.Target("site.com/a.php_x=1.html.tmp"), "not this one");
    s.Save("H\r\n\r\npage", "\\site.com/a.php?x=1");
    EXPECT_TRUE(NativeExists(s.Target("site.com/a.php_x=1.html")));
    EXPECT_FALSE(NativeExists(s.Target("site.com/a.php_x=1.tmp")));
    EXPECT_TRUE(NativeExists(s.Target("site.com/a.php_x=1.html.tmp")));
}

// A second save running inside the first one's yield must not make the first
// delete the wrong placeholder.
TEST(SaveFile, InterleavedSavesEachDeleteTheirOwnPlaceholder) {
    Saver s;
    for (const char* name : {"a.php.tmp", "b.php.tmp", "c.php.tmp"})
        WriteNativeFile(s.Target(std::string("site.com/") + name), "queued");
    bool inner = false;
    s.m.yield = [&] {
        if (inner) return;
        inner = true;
        s.Save("H\r\n\r\nb", "\\site.com/b.php");
    };
    s.Save("H\r\n\r\na", "\\site.com/a.php");
    EXPECT_FALSE(NativeExists(s.Target("site.com/a.php.tmp")));
    EXPECT_FALSE(NativeExists(s.Target("site.com/b.php.tmp")));
    EXPECT_TRUE(NativeExists(s.Target("site.com/c.php.tmp")));
    EXPECT_EQ(ReadNativeFile(s.Target("site.com/a.php.html")), "a\r\n");
    EXPECT_EQ(s.filesDone, 2);
}

TEST(SaveFile, RecordsSearchTextForPagesAndTextFilesOnly) {
    Saver s;
    s.Save("H\r\n\r\n<html><head><title>T</title></head><body><p>Hello</p> <p>World</p>",
           "\\www.site.com/Dir/P.html");
    s.Save("H\r\n\r\nplain words", "\\site.com/notes.txt");
    s.Save("H\r\n\r\n<p>not a page</p>", "\\site.com/pic.gif");
    EXPECT_EQ(ReadNativeFile(s.Target("_SearchData/site.com.txt")),
              "! site.com\\dir\\p.html\r\nHello World\r\n"
              "! site.com\\notes.txt\r\nplain words\r\n");
}

TEST(SaveFile, WritesBinaryDataByteForByte) {
    std::mt19937 random(11);
    std::string binary;
    for (int i = 0; i < 256; ++i) binary += static_cast<char>(i);
    binary += std::string(1000, '\0');
    for (int i = 0; i < (1 << 20); ++i) binary += static_cast<char>(random());
    Saver s;
    s.Save("HTTP/1.0 200 OK\r\n\r\n" + binary, "\\site.com/img/pic.gif");
    EXPECT_EQ(ReadNativeFile(s.Target("site.com/img/pic.gif")), binary + "\r\n");
}

// Addresses crafted to climb out of the target folder write, make and delete
// nothing outside it.
TEST(SaveFile, NeverReachesOutsideTheTargetFolder) {
    Saver s;
    WriteNativeFile(s.tmp.NativePath("up/outside.tmp"), "keep");
    WriteNativeFile(s.tmp.NativePath("outside.tmp"), "keep");
    const auto before = s.OutsideTarget();
    const std::string escape = "\\site.com\\..\\..\\..\\..\\..\\..\\..\\..\\tmp\\vantorin-evil-" +
                               std::to_string(::getpid()) + ".html";
    for (const std::string& address : std::initializer_list<std::string>{
             "\\..\\..\\x\\evil.html", "\\site.com/../../../evil.html", "\\../evil.html",
             " \\ ..\\..\\evil.html", "\\/..\\/..\\/evil.html", "\\..\\outside",
             "\\..\\..\\outside", "\\.\\..\\.\\..\\x\\evil.php", escape}) {
        s.Save("H\r\n\r\n<p>evil</p>", address);
    }
    EXPECT_EQ(s.OutsideTarget(), before);
    EXPECT_FALSE(NativeExists("/tmp/vantorin-evil-" + std::to_string(::getpid()) + ".html"));
}

}  // namespace
}  // namespace vantorin

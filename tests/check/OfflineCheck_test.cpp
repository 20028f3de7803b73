#include "check/OfflineCheck.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/TempDir.h"

namespace vantorin {

namespace fs = std::filesystem;

// A file's path below the mirror ("../" for beside it) and its bytes; a path
// ending in "/" is an empty folder, and the bytes "@loop" make the file a link
// to itself, which no one can read. Returns the mirror's folder.
using Files = std::vector<std::pair<std::string, std::string>>;

static std::string Build(const testing::TempDir& dir, const Files& files) {
    fs::create_directories(dir.NativePath("m"));
    for (const auto& [path, bytes] : files) {
        const std::string native = dir.NativePath("m/" + path);
        if (path.ends_with("/"))
            fs::create_directories(native);
        else if (bytes == "@loop")
            fs::create_symlink(fs::path(native).filename(), native);
        else
            testing::WriteNativeFile(native, bytes);
    }
    return dir.NativePath("m");
}

static std::string Summary(int resolved, int local, const std::string& online) {
    return "Offline check: " + std::to_string(resolved) + " of " + std::to_string(local) +
           " links between saved pages lead to a saved file; " + online + ".";
}

// The mirror's files, the report's lines, the exit status.
using Case = std::tuple<Files, std::vector<std::string>, int>;

TEST(CheckFolder, ReportsHowTheSavedPagesLinkToEachOther) {
    // 20,000 targets met once, then one met three times and again on a later page:
    // the most common goes first, named by the page and link that met it first.
    std::string many;
    for (int i = 0; i < 20000; ++i) many += "<a href=g" + std::to_string(i) + ".html>";
    many += "<img src=late.gif><a href=late.gif><a href=./late.gif>";
    std::vector<std::string> manyLines{
        "Offline check: 0 of 20,004 links between saved pages lead to a saved file; 0 lead online.",
        "big.html -> late.gif (looked for: late.gif)"};
    for (const std::string g : {"g0", "g1", "g2", "g3", "g4", "g5", "g6", "g7", "g8", "g9", "g10",
                                "g11", "g12", "g13", "g14", "g15", "g16", "g17", "g18"})
        manyLines.push_back("big.html -> " + g + ".html (looked for: " + g + ".html)");
    manyLines.push_back("and 19,981 more broken links");

    Files loops{{"ok.html", ""}};  // six pages no one can read
    std::vector<std::string> loopLines{Summary(0, 0, "0 lead online"),
                                       "6 pages or folders could not be read:"};
    for (const char* name : {"l1.html", "l2.html", "l3.html", "l4.html", "l5.html", "l6.html"}) {
        loops.emplace_back(name, "@loop");
        loopLines.push_back(std::string("  ") + name + ": Too many levels of symbolic links");
    }
    loopLines.back() = "  and 1 more";

    // clang-format off
    const Case cases[] = {
        // relative
        {{{"h/a.html", "<a href=b.html><a href=sub/c.html><img src='../h/i.gif'><link href=./b.html>"},
          {"h/b.html", ""}, {"h/i.gif", "GIF"}, {"h/sub/c.html", "<a href=\"../a.html\">"}},
         {Summary(5, 5, "0 lead online")}, 0},
        // root-relative and climbing
        {{{"h/b.html", ""}, {"../x.html", ""}, {"h/sub/a.html", "<a href=/h/b.html><a href=../../../x.html>"}},
         {Summary(0, 2, "0 lead online"), "h/sub/a.html -> /h/b.html (looked for: /h/b.html)",
          "h/sub/a.html -> ../../../x.html (looked for: ../x.html)"}, 1},
        // folders with and without index.html
        {{{"h/a.html", "<a href=sub/><a href=sub><a href=bare/><a href=.><a href=..>"}, {"h/index.html", ""},
          {"h/sub/index.html", ""}, {"h/bare/", ""}},
         {Summary(3, 5, "0 lead online"), "h/a.html -> bare/ (looked for: h/bare/index.html)",
          "h/a.html -> .. (looked for: index.html)"}, 1},
        // query, fragment and escapes
        {{{"a.html", "<a href='b.html?x=1#top'><a href=#top><a href=?q=2><a href=caf%C3%A9.html>"
                     "<a href=caf&eacute;.html><a href=a%20b.html><a href=100%.html>"},
          {"b.html", ""}, {"caf\xC3\xA9.html", ""}, {"a b.html", ""}, {"100%.html", ""}},
         {Summary(5, 5, "0 lead online")}, 0},
        // every kind of link, and text that only looks like one
        {{{"a.htm", "<meta http-equiv=Refresh content=\"0; URL='x1.html'\"><link href=x2.css>"
                    "<script src=x3.js></script><!-- <a href=no.html> --><script>"
                    "document.write('<a href=no.html>')</script><img src=x4.gif><map>"
                    "<area href=x5.html></map><iframe src=x6.html></iframe><form action=no.html>"
                    "<a name=top></a><template><a href=no.html></a></template><a href=http://o.test>"},
          {"f.html", "<frameset><frame src=x7.html></frameset>"}, {"x1.html", ""}, {"x2.css", ""},
          {"x3.js", ""}, {"x4.gif", ""}, {"x5.html", ""}, {"x6.html", ""}, {"x7.html", ""}},
         {Summary(7, 7, "1 leads online")}, 0},
        // a page that is no HTML, a text file and broken markup, repaired as a browser
        // would: the a twice
        {{{"data.html", std::string("\0\x01\xFF<<a", 6)}, {"notes.txt", "<a href=gone.html>"},
          {"bad.html", "<div><a href=b.html>one<p><a href=\"b.html\">two</b></i></div></span><a"}, {"b.html", ""}},
         {Summary(3, 3, "0 lead online")}, 0},
        {loops, loopLines, 2},  // unreadable pages
        {{{"big.html", many}, {"z.html", "<a href='./late.gif?x'>"}}, manyLines, 1},  // many broken targets
    };
    // clang-format on
    for (const auto& [files, lines, status] : cases) {
        testing::TempDir dir;
        const OfflineReport report = CheckFolder(Build(dir, files) + "/");
        EXPECT_EQ(std::tuple(CheckReportLines(report), CheckExitStatus(report)),
                  std::tuple(lines, status));
    }
    // A folder that cannot be read (status 2 and its reason) is a row of the end-to-end run.
}

}  // namespace vantorin

// The offline check: how the saved pages of a mirror link to each other as a
// browser opening them from disk sees it. Every link of every page is
// resolved against the page's folder (query and fragment removed, escapes
// decoded); it resolves when that file exists or, for a folder, when the
// folder holds "index.html". Links with a scheme or to another host lead
// online; a link that climbs out of the checked folder (a root-relative one
// too) is broken. Pages are read one at a time, and only the most common
// broken targets are kept, so memory does not grow with the number of links.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vantorin {

// The names the mirror gives pages, in any case: ".htm" and ".html" (dynamic
// pages are saved as "x.php_id=2.html", "x.asp.html"), ".shtm" and ".shtml".
bool IsPageName(std::string_view name);

struct BrokenLink {
    std::string page;       // below the checked folder, "/" between names
    std::string link;       // as written
    std::string lookedFor;  // below the checked folder, or where outside it
    bool operator==(const BrokenLink&) const = default;
};

struct OfflineReport {
    static constexpr std::size_t kShown = 20;
    static constexpr std::size_t kUnreadableShown = 5;

    std::string folderError;                   // why the checked folder cannot be listed
    std::int64_t localLinks = 0;               // links to files below or above the folder
    std::int64_t resolved = 0;                 // of those, the ones that lead to a file
    std::int64_t online = 0;                   // links with a scheme or to another host
    std::vector<BrokenLink> broken;            // up to kShown, most common target first
    std::int64_t brokenNotShown = 0;           // broken links to the targets not shown
    std::int64_t unreadable = 0;               // pages and folders that could not be read
    std::vector<std::string> firstUnreadable;  // "path: reason", up to kUnreadableShown
};

// Every page below `folder` (a native path).
OfflineReport CheckFolder(const std::string& folder);
// The pages at `pages` (native paths below `folder`, repeats allowed), with
// their links resolved against everything below `folder`.
OfflineReport CheckPages(const std::string& folder, std::vector<std::string> pages);

// "Offline check: 2,839 of 2,839 links between saved pages lead to a saved
// file; 12 lead online."
std::string SummaryLine(const OfflineReport& report);
// The summary, the broken links shown ("page -> link (looked for: path)"),
// and what could not be read.
std::vector<std::string> CheckReportLines(const OfflineReport& report);
// The check's exit status: 0 when every local link resolves, 1 when some do
// not, 2 when the folder or a page in it cannot be read.
int CheckExitStatus(const OfflineReport& report);

}  // namespace vantorin

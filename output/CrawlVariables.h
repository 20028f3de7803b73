// The process-wide variables of a crawl. One instance is owned by the
// application and passed by reference, so every test builds its own.
#pragma once

#include <array>
#include <string>

namespace vantorin {

// KeywordFilters is indexed 1 to 100; entry 0 is never used.
using KeywordFilterArray = std::array<std::string, 101>;

struct CrawlVariables {
    std::string SiteHost;        // start host, "www." removed, trimmed
    std::string TargetFolder;    // the mirror's folder, always ending in "\"
    std::string FileTypeSet;     // wanted extensions, each wrapped in colons
    std::string SavePath;        // the local path most recently made
    std::string MadeFolders;     // folders this crawl created, lower-cased, each + "*"
    std::string LastSearchPage;  // ":" + page path + ":" of the last search record
    KeywordFilterArray KeywordFilters{};
};

}  // namespace vantorin

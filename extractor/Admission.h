// Queue admission: for each absolute link the scanner finds, whether it is
// queued (with a ".tmp" placeholder and a "log.txt" line), listed as not
// taken, or dropped. "Already known" is judged by files in the mirror, not by
// a list of addresses seen.
#pragma once

#include <string>

#include "extractor/AddressList.h"
#include "extractor/KeywordFilters.h"
#include "output/Mirror.h"

namespace vantorin {

// What admission judges a link against and where it puts it.
struct Admission {
    Mirror& mirror;                  // the site's host, the target folder, the records
    const std::string& wantedTypes;  // each wanted extension wrapped in colons
    const KeywordFilters& filters;
    AddressList& queue;
    AddressList& notTaken;  // links on the site whose type is not wanted
};

enum class Admitted { Dropped, NotTaken, Queued };

Admitted AdmitLink(std::string link, Admission& to);

bool IsQueryPage(const std::string& link);
bool IsListedFileType(const std::string& link, const std::string& wantedTypes);
// A file length can be read at `path`; one second try when the first fails.
bool FileExists(const std::string& path, const FileSystem& fs);

}  // namespace vantorin

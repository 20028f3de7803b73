// The crawl's record files: "log.txt", "transdd.txt", the ".tmp" placeholders,
// the search extract under "_SearchData", and the end-of-crawl sweep.
#pragma once

#include <string>
#include <string_view>

#include "output/Mirror.h"

namespace vantorin {

// MakeLocalPath on `path` (which therefore loses every "www.", gets its
// folders made and overwrites SavePath), then `text` + CR LF appended.
void AppendToFile(const std::string& text, std::string& path, Mirror& m);

// The page's visible text with line ends turned into blanks and runs of up
// to four blanks folded to one.
std::string GetPageText(const std::string& path, Mirror& m);

// One search record ("! " + page path, then the text) for the page at the full
// local `path`, fetched from `slotHost`; an immediate repeat is suppressed.
void RecordSearchText(const std::string& text, std::string_view slotHost, const std::string& path,
                      Mirror& m);

// Deletes "*.tmp" in every folder this crawl made (MadeFolders).
void RemoveTempFiles(Mirror& m);

}  // namespace vantorin

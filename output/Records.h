// The crawl's record files: "log.txt", "transdd.txt", the ".tmp" placeholders,
// the search extract under "_SearchData", and the end-of-crawl sweep.
#pragma once

#include <string>
#include <string_view>

#include "output/Mirror.h"
#include "platform/Task.h"

namespace vantorin {

// `text` + CR LF appended to the file at `path`, made local as a saved file's
// path is (so it loses every "www." and gets its folders made). False when
// the line could not be written.
bool AppendToFile(const std::string& text, std::string_view path, Mirror& m);

// The page's visible text with line ends turned into blanks and runs of up
// to four blanks folded to one. The page is given four turns of the event
// loop to load, so other handlers run in the middle of a save.
Task<std::string> GetPageText(std::string path, Mirror& m);

// One search record ("! " + page path, then the text) for the page at the full
// local `path`, fetched from `host`; an immediate repeat is suppressed.
void RecordSearchText(const std::string& text, std::string_view host, const std::string& path,
                      Mirror& m);

// Deletes "*.tmp" in every folder this crawl made.
void RemoveTempFiles(Mirror& m);

}  // namespace vantorin

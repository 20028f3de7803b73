// Address-to-path mapping: the local file path of an address under the target
// folder, the folders on the way, and the name cleaners that the saver and the
// link scanner share so that saved names and rewritten links agree.
#pragma once

#include <string>
#include <string_view>

#include "output/CrawlVariables.h"
#include "platform/FileSystem.h"

namespace vantorin {

// Turns folder + address text into a local path, creates the folders on the
// way, and stores the result both in vars.SavePath and back into `path`.
void MakeLocalPath(std::string& path, CrawlVariables& vars, FileSystem& fs);

// Creates each folder along `path`, root first: every prefix up to a "\",
// trimmed; what follows the last "\" (a file name) is never made. Failures are
// ignored.
void MakeFoldersAlong(const std::string& path, CrawlVariables& vars, FileSystem& fs);

// Creates exactly one folder; only when that succeeds is it recorded,
// lower-cased and followed by "*", in vars.MadeFolders.
void MakeFolder(const std::string& folder, CrawlVariables& vars, FileSystem& fs);

// The character table: "*" "{" "}" "|" removed, ">" "<" "?" "!" "&" -> "_",
// then three passes of "__" -> "_".
std::string CleanLinkName(std::string_view name);
// CleanLinkName, then ".html" added when the text holds no "." at all.
std::string CleanFileName(std::string_view name);

// True when the file lies directly in the site's host folder. Kept as
// designed: the character right after "host\" is skipped before the test.
bool IsTopLevelFile(std::string_view path, std::string_view siteHost);

}  // namespace vantorin

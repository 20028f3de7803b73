// Address-to-path mapping: the local file path of an address under the target
// folder, the folders on the way, and the name cleaners that the saver and the
// link scanner share so that saved names and rewritten links agree.
#pragma once

#include <string>
#include <string_view>

#include "platform/FileSystem.h"

namespace vantorin {

// Folder + address text as a local path: trimmed, every "www." removed (also
// from the target folder's own names), a leading "http://" dropped, "/" made
// "\" and "\\" made "\". The folders on the way are made (see MakeFoldersAlong).
std::string MakeLocalPath(std::string_view path, FileSystem& fs, std::string& madeFolders);

// Creates each folder along `path`, root first: every prefix up to a "\",
// trimmed; what follows the last "\" (a file name) is never made. Failures are
// ignored.
void MakeFoldersAlong(const std::string& path, FileSystem& fs, std::string& madeFolders);

// Creates exactly one folder; only when that succeeds is it recorded,
// lower-cased and followed by "*", in `madeFolders`, so the end-of-crawl sweep
// never touches a folder that was there before.
void MakeFolder(const std::string& folder, FileSystem& fs, std::string& madeFolders);

// The character table: "*" "{" "}" "|" removed, ">" "<" "?" "!" "&" -> "_",
// then three passes of "__" -> "_".
std::string CleanLinkName(std::string_view name);
// CleanLinkName, then ".html" added when the text holds no "." at all.
std::string CleanFileName(std::string_view name);

// True when the file lies directly in the site's host folder. The character
// right after "host\" is skipped before the test, so a one-letter folder
// there still counts as the top level.
bool IsTopLevelFile(std::string_view path, std::string_view siteHost);

}  // namespace vantorin

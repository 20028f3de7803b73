// The rules for the folder a site is saved to: how the wizard normalises the
// typed folder, and the probe that proves it writable.
#pragma once

#include <string>
#include <string_view>

#include "platform/FileSystem.h"

namespace vantorin {

// The name cleaner's character table ("*" "{" "}" "|" removed, ">" "<" "?" "!"
// "&" -> "_", three "__" passes), then "/" -> "\", then "\" appended unless the
// text already ends in one. A blank text has no last character, so "" -> "\".
std::string NormaliseFolderText(std::string_view text);

// Writes the probe "test23893.txt" into `folder` (as NormaliseFolderText
// gives it) and deletes it again. False when the probe cannot be written or
// removed.
bool TestFolderWritable(const std::string& folder, FileSystem& fs);

}  // namespace vantorin

// The list of wanted file types: the default list, the file
// program folder + "\temp\filetypes.txt", and the set of wanted types built from it.
#pragma once

#include <string>
#include <vector>

#include "platform/FileSystem.h"

namespace vantorin {

const std::vector<std::string>& DefaultFileTypes();
std::string FileTypesPath(const FileSystem& fs);

// Writes every item trimmed, each followed by CR LF (an empty list gives an
// empty file). Failures are silent.
void SaveFileTypes(const std::vector<std::string>& list, FileSystem& fs);
// Resets the list to the defaults and writes the file.
void MakeFileTypesFile(std::vector<std::string>& list, FileSystem& fs);
// The wizard's load step: makes the temp folder, writes the defaults when the
// file is missing, then adds every non-blank line as read (untrimmed). A first
// run therefore shows every default twice, and saving the list then writes
// them twice.
void FillFileTypesList(std::vector<std::string>& list, FileSystem& fs);
// ":" + line lower-cased and trimmed + ":" for every non-blank line, in file
// order; "" when the file is missing.
std::string LoadFileTypes(const FileSystem& fs);

}  // namespace vantorin

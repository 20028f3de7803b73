// Queue admission: for each absolute link the scanner finds, whether it is
// queued (with a ".tmp" placeholder and a "log.txt" line), listed as not
// taken, or dropped. "Already known" is judged by files in the mirror.
#pragma once

#include <string>

#include "output/Mirror.h"
#include "platform/StringList.h"

namespace vantorin {

void AdmitLink(std::string link, StringList& queue, StringList& notTaken, Mirror& m);

bool IsFiltered(const std::string& link, const KeywordFilterArray& filters);
bool IsQueryPage(const std::string& link);
bool IsListedFileType(const std::string& link, const std::string& fileTypeSet);
// A file length can be read at `path`; one second try when the first fails.
bool FileExists(const std::string& path, const FileSystem& fs);

}  // namespace vantorin

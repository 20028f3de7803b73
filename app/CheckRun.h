// `vantorin --check FOLDER`, and the offline check's line at the end of a crawl.
#pragma once

#include <string>
#include <vector>

namespace vantorin {

// Checks every page below `folder` and prints the report on stdout; returns
// 0 when every local link resolves, 1 when some do not, 2 when the folder or
// a page in it cannot be read (said on stderr).
int RunCheck(const std::string& folder);

// The summary over the pages among `saved` (native paths of the files a crawl
// wrote), their links resolved within `targetFolder` (native).
std::string CrawlCheckLine(const std::string& targetFolder, std::vector<std::string> saved);

}  // namespace vantorin

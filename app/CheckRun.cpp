#include "app/CheckRun.h"

#include <cstdio>
#include <utility>

#include "check/OfflineCheck.h"

namespace vantorin {

int RunCheck(const std::string& folder) {
    const OfflineReport report = CheckFolder(folder);
    if (!report.folderError.empty()) {
        std::fprintf(stderr, "vantorin: %s cannot be read: %s\n", folder.c_str(),
                     report.folderError.c_str());
    } else {
        for (const std::string& line : CheckReportLines(report)) std::printf("%s\n", line.c_str());
    }
    return CheckExitStatus(report);
}

std::string CrawlCheckLine(const std::string& targetFolder, std::vector<std::string> saved) {
    return SummaryLine(CheckPages(targetFolder, std::move(saved)));
}

}  // namespace vantorin

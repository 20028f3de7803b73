#include "app/CrawlReport.h"

#include "app/CommandLine.h"
#include "text/CountText.h"

namespace vantorin {

namespace {

void KeepFirst(std::vector<WriteFailure>& kept, const std::vector<WriteFailure>& more) {
    for (const WriteFailure& failure : more)
        if (kept.size() < WriteFaults::kKept) kept.push_back(failure);
}

void ListFailures(std::vector<std::string>& lines, std::int64_t count,
                  const std::vector<WriteFailure>& first) {
    for (const WriteFailure& failure : first)
        lines.push_back("  " + failure.path + ": " + failure.reason);
    const auto shown = static_cast<std::int64_t>(first.size());
    if (count > shown)
        lines.push_back("  and " + FormatThousands(std::to_string(count - shown)) + " more");
}

}  // namespace

WriteFaults Combined(const WriteFaults& first, const WriteFaults& second) {
    WriteFaults all = first;
    all.filesFailed += second.filesFailed;
    all.linesFailed += second.linesFailed;
    all.refused += second.refused;
    KeepFirst(all.firstFiles, second.firstFiles);
    KeepFirst(all.firstLines, second.firstLines);
    return all;
}

int ExitStatus(const CrawlResult& result) {
    if (result.interrupted) return kExitInterrupted;
    const WriteFaults& f = result.faults;
    // A refused write is a file not written too: a target folder named with
    // "www." has every write of its mirror refused.
    if (f.filesFailed > 0 || f.linesFailed > 0 || f.refused > 0) return kExitWriteFailed;
    if (result.bytesReceived == 0) return kExitNoServer;
    return kExitDone;
}

std::vector<std::string> ReportLines(const CrawlResult& result) {
    const WriteFaults& f = result.faults;
    std::vector<std::string> lines;
    if (f.filesFailed > 0) {
        lines.push_back(CountOf(f.filesFailed, "file", "files") + " could not be written:");
        ListFailures(lines, f.filesFailed, f.firstFiles);
    }
    if (f.linesFailed > 0) {
        lines.push_back(CountOf(f.linesFailed, "line", "lines") +
                        " could not be added to record files and placeholders:");
        ListFailures(lines, f.linesFailed, f.firstLines);
    }
    if (f.refused > 0)
        lines.push_back(CountOf(f.refused, "write was", "writes were") +
                        " refused: outside the target folder");
    if (!result.interrupted && result.bytesReceived == 0)
        lines.push_back("No server answered: nothing was received.");
    return lines;
}

}  // namespace vantorin

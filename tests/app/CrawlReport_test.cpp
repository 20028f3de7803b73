#include "app/CrawlReport.h"

#include <gtest/gtest.h>

#include <tuple>

namespace vantorin {
namespace {

std::vector<WriteFailure> Failures(int count, const std::string& tag, const std::string& reason) {
    std::vector<WriteFailure> failures;
    for (int i = 0; i < count; ++i) failures.push_back({tag + std::to_string(i), reason});
    return failures;
}

// The exit status weighs an interrupt first, then failed writes, then a
// silent server; the closing lines list the counts and the first five
// failures, the program folder's before the mirror's.
TEST(CrawlReport, ExitStatusAndClosingLines) {
    // Interrupted, bytes, files, lines and writes refused failing, the status.
    const std::tuple<bool, int, int, int, int, int> cases[] = {
        {false, 10, 0, 0, 0, 0}, {false, 0, 0, 0, 0, 4},   {false, 10, 1, 0, 0, 3},
        {false, 10, 0, 1, 0, 3}, {false, 10, 0, 0, 1, 3},  {false, 0, 2, 0, 0, 3},  // 3 wins over 4
        {true, 0, 0, 0, 0, 130}, {true, 10, 1, 1, 1, 130},
    };
    for (const auto& [interrupted, bytes, files, lines, refused, status] : cases)
        EXPECT_EQ(ExitStatus({interrupted, bytes, {files, lines, refused, {}, {}}}), status)
            << interrupted << bytes << files << lines << refused;

    const std::string full = "No space left on device";
    const WriteFaults all = Combined(
        {2, 0, 1, Failures(2, "/p/", full), {}},
        {7, 1, 3, Failures(5, "/m/", full), Failures(1, "/m/log", "Read-only file system")});
    const std::pair<CrawlResult, std::vector<std::string>> reports[] = {
        {{false, 5, all},
         {"9 files could not be written:", "  /p/0: " + full, "  /p/1: " + full, "  /m/0: " + full,
          "  /m/1: " + full, "  /m/2: " + full, "  and 4 more",
          "1 line could not be added to record files and placeholders:",
          "  /m/log0: Read-only file system", "4 writes were refused: outside the target folder"}},
        {{false, 0, {}}, {"No server answered: nothing was received."}},
        {{true, 0, {}}, {}},
        {{false, 1, {0, 0, 1, {}, {}}}, {"1 write was refused: outside the target folder"}},
    };
    for (const auto& [result, lines] : reports) EXPECT_EQ(ReportLines(result), lines);
}

}  // namespace
}  // namespace vantorin

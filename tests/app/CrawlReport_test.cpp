#include "app/CrawlReport.h"

#include <gtest/gtest.h>

#include "app/HeadlessDialogs.h"

#include <tuple>

namespace vantorin {
namespace {

WriteFaults Failing(std::int64_t files, std::int64_t lines, std::int64_t refused,
                    const std::string& tag) {
    WriteFaults f;
    f.filesFailed = files;
    f.linesFailed = lines;
    f.refused = refused;
    for (std::int64_t i = 0; i < files && i < 5; ++i)
        f.firstFiles.push_back({tag + std::to_string(i), "No space left on device"});
    for (std::int64_t i = 0; i < lines && i < 5; ++i)
        f.firstLines.push_back({tag + "log" + std::to_string(i), "Read-only file system"});
    return f;
}

TEST(CrawlReport, ExitStatusWeighsInterruptWritesThenSilence) {
    // Interrupted, bytes, files, lines and writes refused failing, the status.
    const std::tuple<bool, int, int, int, int, int> cases[] = {
        {false, 10, 0, 0, 0, 0}, {false, 0, 0, 0, 0, 4},   {false, 10, 1, 0, 0, 3},
        {false, 10, 0, 1, 0, 3}, {false, 10, 0, 0, 1, 3},  {false, 0, 2, 0, 0, 3},  // 3 wins over 4
        {true, 0, 0, 0, 0, 130}, {true, 10, 1, 1, 1, 130},
    };
    for (const auto& [interrupted, bytes, files, lines, refused, status] : cases) {
        CrawlResult r{interrupted, bytes, Failing(files, lines, refused, "")};
        EXPECT_EQ(ExitStatus(r), status) << interrupted << bytes << files << lines << refused;
    }
}

TEST(CrawlReport, ListsCountsAndTheFirstFiveOfProgramThenMirror) {
    const WriteFaults all = Combined(Failing(2, 0, 1, "/p/"), Failing(7, 1, 3, "/m/"));
    EXPECT_EQ(all.filesFailed, 9);
    EXPECT_EQ(all.refused, 4);
    const std::vector<std::string> lines = ReportLines({false, 5, all});
    const std::vector<std::string> wanted = {
        "9 files could not be written:",
        "  /p/0: No space left on device",
        "  /p/1: No space left on device",
        "  /m/0: No space left on device",
        "  /m/1: No space left on device",
        "  /m/2: No space left on device",
        "  and 4 more",
        "1 line could not be added to record files and placeholders:",
        "  /m/log0: Read-only file system",
        "4 writes were refused: outside the target folder",
    };
    EXPECT_EQ(lines, wanted);
    EXPECT_EQ(ReportLines({false, 0, {}}),
              std::vector<std::string>{"No server answered: nothing was received."});
    EXPECT_TRUE(ReportLines({true, 0, {}}).empty());
    EXPECT_EQ(ReportLines({false, 1, Failing(0, 0, 1, "")}),
              std::vector<std::string>{"1 write was refused: outside the target folder"});
}

TEST(HeadlessDialogs, OneLinePerBoxWithoutTheQuestionItAnswersItself) {
    const std::string done =
        "The website has been downloaded.\r\n\r\nWould you like to browse the download directory?";
    EXPECT_EQ(MessageLine(done, "Done.", true), "Done.: The website has been downloaded.");
    EXPECT_EQ(MessageLine("Are you sure you want to exit?", "Exit", true), "");
    EXPECT_EQ(MessageLine("Is it?\r\nYes.\nSure?\rNo ", "T", false), "T: Is it? Yes. Sure? No");
}

}  // namespace
}  // namespace vantorin

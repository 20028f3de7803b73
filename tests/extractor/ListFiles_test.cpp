#include <gtest/gtest.h>

#include <filesystem>

#include "extractor/FileTypesList.h"
#include "extractor/KeywordFilters.h"
#include "tests/support/TempDir.h"

namespace vantorin {
namespace {

using testing::ReadNativeFile;
using testing::TempDir;
using testing::WriteNativeFile;

class ListFilesTest : public ::testing::Test {
protected:
    TempDir dir;
    std::string target;
    FileSystem fs{target, dir.Backslashed() + "prog"};
    void SetUp() override { std::filesystem::create_directories(dir.NativePath("prog")); }
    std::string FileTypesNative() const { return dir.NativePath("prog/temp/filetypes.txt"); }
    std::string FiltersNative() const { return dir.NativePath("prog/filters.txt"); }
};

TEST_F(ListFilesTest, DefaultFileTypesFileIsSeventyFourBytesOfCrLfLines) {
    std::vector<std::string> list;
    FillFileTypesList(list, fs);  // first run: no temp folder, no file
    std::string file = ReadNativeFile(FileTypesNative());
    EXPECT_EQ(file,
              ".htm\r\n.html\r\n.php\r\n.asp\r\n.txt\r\n.gif\r\n.jpg\r\n.jpeg\r\n.png\r\n"
              ".pdf\r\n.zip\r\n.css\r\n");
    EXPECT_EQ(file.size(), 74u);
    // The first run lists every default twice, as designed.
    ASSERT_EQ(list.size(), 24u);
    EXPECT_EQ(list[0], ".htm");
    EXPECT_EQ(list[12], ".htm");
    EXPECT_EQ(list[23], ".css");
    EXPECT_EQ(LoadFileTypes(fs),
              ":.htm::.html::.php::.asp::.txt::.gif::.jpg::.jpeg::.png::.pdf::.zip::.css:");

    SaveFileTypes(list, fs);
    EXPECT_EQ(ReadNativeFile(FileTypesNative()).size(), 148u);

    std::vector<std::string> second;
    FillFileTypesList(second, fs);
    EXPECT_EQ(second.size(), 24u);  // the file exists now: read once
}

TEST_F(ListFilesTest, BlankLinesSkippedAndEntriesKeptAsReadInTheList) {
    WriteNativeFile(FileTypesNative(), "\r\n  .GIF  \r\n   \r\n.Html\r\n.zip");
    std::vector<std::string> list;
    FillFileTypesList(list, fs);
    EXPECT_EQ(list, (std::vector<std::string>{"  .GIF  ", ".Html", ".zip"}));
    EXPECT_EQ(LoadFileTypes(fs), ":.gif::.html::.zip:");

    SaveFileTypes(list, fs);  // written trimmed
    EXPECT_EQ(ReadNativeFile(FileTypesNative()), ".GIF\r\n.Html\r\n.zip\r\n");
    SaveFileTypes({}, fs);
    EXPECT_EQ(ReadNativeFile(FileTypesNative()), "");
    EXPECT_EQ(LoadFileTypes(fs), "");

    std::vector<std::string> reset = {".x"};
    MakeFileTypesFile(reset, fs);
    EXPECT_EQ(reset, DefaultFileTypes());
}

TEST_F(ListFilesTest, MissingFileTypesFileGivesAnEmptySet) {
    EXPECT_EQ(LoadFileTypes(fs), "");
}

TEST_F(ListFilesTest, KeywordFiltersLoadFromIndexOneAllOrNothing) {
    KeywordFilterArray filters;
    filters[5] = "stale";
    LoadKeywordFilters(filters, fs);  // no file: all empty
    for (const auto& f : filters) EXPECT_EQ(f, "");

    WriteNativeFile(FiltersNative(), "ads\r\n\r\n  track  \r\n   \r\nBanner\r\n");
    LoadKeywordFilters(filters, fs);
    EXPECT_EQ(filters[1], "ads");
    EXPECT_EQ(filters[2], "track");
    EXPECT_EQ(filters[3], "Banner");
    EXPECT_EQ(filters[4], "");
    EXPECT_EQ(KeywordFilterList(filters), (std::vector<std::string>{"ads", "track", "Banner"}));

    auto fileOf = [](int n) {
        std::string text;
        for (int i = 1; i <= n; ++i) text += "k" + std::to_string(i) + "\r\n\r\n";
        return text;
    };
    WriteNativeFile(FiltersNative(), fileOf(100));
    LoadKeywordFilters(filters, fs);
    EXPECT_EQ(filters[1], "k1");
    EXPECT_EQ(filters[100], "k100");
    WriteNativeFile(FiltersNative(), fileOf(101));
    LoadKeywordFilters(filters, fs);
    EXPECT_EQ(KeywordFilterList(filters).size(), 0u);
}

TEST_F(ListFilesTest, FilterListRoundTripsThroughTheFile) {
    KeywordFilterArray filters;
    SaveKeywordFilters({"ADS", "TRACK"}, filters, fs);
    EXPECT_EQ(ReadNativeFile(FiltersNative()), "ADS\r\nTRACK\r\n");
    EXPECT_EQ(filters[1], "ADS");
    EXPECT_EQ(filters[2], "TRACK");
    KeywordFilterArray loaded;
    LoadKeywordFilters(loaded, fs);
    EXPECT_EQ(loaded, filters);

    SaveKeywordFilters({}, filters, fs);
    EXPECT_EQ(ReadNativeFile(FiltersNative()), "");
    EXPECT_EQ(filters[1], "");
}

TEST(FilterExists, CaseAndBlindToSurroundingBlanks) {
    std::vector<std::string> list = {"BANNER", " ads "};
    EXPECT_TRUE(FilterExists("banner", list));
    EXPECT_TRUE(FilterExists("  Banner ", list));
    EXPECT_TRUE(FilterExists("ADS", list));
    EXPECT_FALSE(FilterExists("ban", list));
    EXPECT_FALSE(FilterExists("x", {}));
}

}  // namespace
}  // namespace vantorin

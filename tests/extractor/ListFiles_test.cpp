#include <gtest/gtest.h>

#include <filesystem>

#include "extractor/FileTypesList.h"
#include "extractor/KeywordFilters.h"
#include "tests/support/TempDir.h"

namespace vantorin {
namespace {

using namespace testing;

struct ListFilesTest : ::testing::Test {
    TempDir dir;
    std::string target;
    FileSystem fs{target, dir.Backslashed() + "prog"};
    ListFilesTest() { std::filesystem::create_directories(dir.NativePath("prog")); }
    std::string FileTypes() const { return dir.NativePath("prog/temp/filetypes.txt"); }
    std::string Filters() const { return dir.NativePath("prog/filters.txt"); }
};

TEST_F(ListFilesTest, FileTypesDefaultsOnFirstRunAndEntriesAsRead) {
    std::vector<std::string> list;
    FillFileTypesList(list, fs);  // first run: no temp folder, no file
    EXPECT_EQ(ReadNativeFile(FileTypes()),
              ".htm\r\n.html\r\n.php\r\n.asp\r\n.txt\r\n.gif\r\n.jpg\r\n.jpeg\r\n.png\r\n"
              ".pdf\r\n.zip\r\n.css\r\n");
    // The first run lists every default twice, as designed.
    EXPECT_EQ(list.size(), 24u);

    WriteNativeFile(FileTypes(), "\r\n  .GIF  \r\n   \r\n.Html\r\n.zip");
    list.clear();
    FillFileTypesList(list, fs);
    EXPECT_EQ(list, (std::vector<std::string>{"  .GIF  ", ".Html", ".zip"}));
    EXPECT_EQ(LoadFileTypes(fs), ":.gif::.html::.zip:");
    SaveFileTypes(list, fs);
    EXPECT_EQ(ReadNativeFile(FileTypes()), ".GIF\r\n.Html\r\n.zip\r\n");
}

TEST_F(ListFilesTest, KeywordFiltersFromIndexOneAllOrNothing) {
    KeywordFilterArray filters;
    filters[5] = "stale";
    LoadKeywordFilters(filters, fs);  // no file: all empty
    EXPECT_EQ(filters, KeywordFilterArray{});

    WriteNativeFile(Filters(), "ads\r\n\r\n  track  \r\n   \r\nBanner\r\n");
    LoadKeywordFilters(filters, fs);
    EXPECT_EQ(KeywordFilterList(filters), (std::vector<std::string>{"ads", "track", "Banner"}));
    WriteNativeFile(Filters(), "one\r\n");  // a shorter list leaves none of the longer
    LoadKeywordFilters(filters, fs);
    EXPECT_EQ(KeywordFilterList(filters), std::vector<std::string>{"one"});

    std::vector<std::string> many;
    for (int i = 1; i <= 101; ++i) many.push_back("k" + std::to_string(i));
    SaveKeywordFilters(many, filters, fs);  // one past 100 keeps none
    EXPECT_TRUE(KeywordFilterList(filters).empty());
    many.pop_back();
    SaveKeywordFilters(many, filters, fs);
    KeywordFilterArray loaded;
    LoadKeywordFilters(loaded, fs);
    EXPECT_EQ(loaded[100], "k100");
    EXPECT_EQ(loaded, filters);

    EXPECT_TRUE(FilterExists("  Banner ", {" ads ", "BANNER"}) && !FilterExists("ban", {"BANNER"}));
}

}  // namespace
}  // namespace vantorin

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
    FileSystem fs{"", dir.Backslashed() + "prog"};
    ListFilesTest() { std::filesystem::create_directories(dir.NativePath("prog")); }
    std::string FileTypes() const { return dir.NativePath("prog/temp/filetypes.txt"); }
    std::string Filters() const { return dir.NativePath("prog/filters.txt"); }
};

// The first run (no file: the defaults are written, then read again) is pinned
// by the wizard's list of file types and its snapshots.
TEST_F(ListFilesTest, FileTypesEntriesAsReadAndSaved) {
    WriteNativeFile(FileTypes(), "\r\n  .GIF  \r\n   \r\n.Html\r\n.zip");
    std::vector<std::string> list;
    FillFileTypesList(list, fs);
    EXPECT_EQ(list, (std::vector<std::string>{"  .GIF  ", ".Html", ".zip"}));
    EXPECT_EQ(LoadFileTypes(fs), ":.gif::.html::.zip:");
    SaveFileTypes(list, fs);
    EXPECT_EQ(ReadNativeFile(FileTypes()), ".GIF\r\n.Html\r\n.zip\r\n");
}

TEST_F(ListFilesTest, KeywordFiltersInFileOrderAllOrNothing) {
    KeywordFilters filters;
    filters.Save({"stale"}, fs);
    std::filesystem::remove(Filters());
    filters.Load(fs);  // no file: none
    EXPECT_TRUE(filters.List().empty());

    WriteNativeFile(Filters(), "ads\r\n\r\n  track  \r\n   \r\nBanner\r\n");
    filters.Load(fs);
    EXPECT_EQ(filters.List(), (std::vector<std::string>{"ads", "track", "Banner"}));
    WriteNativeFile(Filters(), "one\r\n");  // a shorter list leaves none of the longer
    filters.Load(fs);
    EXPECT_EQ(filters.List(), std::vector<std::string>{"one"});

    std::vector<std::string> many;
    for (int i = 1; i <= 101; ++i) many.push_back("k" + std::to_string(i));
    filters.Save(many, fs);  // one past 100 keeps none
    EXPECT_TRUE(filters.List().empty());
    many.pop_back();
    filters.Save(many, fs);
    filters.Load(fs);  // read back from the file Save wrote
    EXPECT_EQ(filters.List(), many);

    EXPECT_TRUE(FilterExists("  Banner ", {" ads ", "BANNER"}) && !FilterExists("ban", {"BANNER"}));
}

}  // namespace
}  // namespace vantorin

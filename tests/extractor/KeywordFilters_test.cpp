#include "extractor/KeywordFilters.h"

#include <gtest/gtest.h>

#include "tests/support/TempDir.h"

namespace vantorin::testing {

// Read in file order, blank lines skipped and each keyword trimmed; a list of
// over 100 is kept not at all.
TEST(KeywordFilters, ReadInFileOrderAndSavedAllOrNothing) {
    TempDir dir;
    FileSystem fs{"", dir.Backslashed() + "p"};
    KeywordFilters filters;  // the file written makes the program folder
    WriteNativeFile(dir.NativePath("p/filters.txt"), "ads\r\n\r\n  track  \r\n   \r\nBanner\r\n");
    filters.Load(fs);
    EXPECT_EQ(filters.List(), (std::vector<std::string>{"ads", "track", "Banner"}));

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

}  // namespace vantorin::testing

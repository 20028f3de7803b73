#include "app/UnsavedPages.h"

#include <gtest/gtest.h>

namespace vantorin {

// After 500 saved pages the 200th unsaved one in a row gives up; two unsaved
// pages to each saved one give up once 200 more were unsaved than saved.
TEST(UnsavedPages, GiveUpAfter200InARowOr200MoreThanSaved) {
    UnsavedPages inARow;
    for (int i = 0; i < 500; ++i) ASSERT_FALSE(inARow.Note(true));
    for (int i = 1; i < 200; ++i) ASSERT_FALSE(inARow.Note(false));
    EXPECT_TRUE(inARow.Note(false));
    // The rest of the line is in the end-to-end run whose folder refuses every write.
    EXPECT_NE(inARow.GaveUpLine().find(" (500 saved); "), std::string::npos);
    UnsavedPages mixed;
    int notes = 1;
    while (!mixed.Note(notes % 3 == 0)) ++notes;
    EXPECT_EQ(notes, 596);
}

}  // namespace vantorin

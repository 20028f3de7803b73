#include "app/UnsavedPages.h"

#include <gtest/gtest.h>

namespace vantorin {
namespace {

// After 500 saved pages the 200th unsaved one in a row gives up; two unsaved
// pages to each saved one give up once 200 more were unsaved than saved.
TEST(UnsavedPages, GiveUpAfter200InARowOr200MoreThanSaved) {
    UnsavedPages inARow;
    for (int i = 0; i < 500; ++i) ASSERT_FALSE(inARow.Note(true));
    for (int i = 1; i < 200; ++i) ASSERT_FALSE(inARow.Note(false));
    EXPECT_TRUE(inARow.Note(false));
    EXPECT_EQ(inARow.GaveUpLine(),
              "Gave up after 200 pages that could not be saved (500 saved); the folder refuses "
              "writes.");
    UnsavedPages mixed;
    int notes = 1;
    while (!mixed.Note(notes % 3 == 0)) ++notes;
    EXPECT_EQ(notes, 596);
}

}  // namespace
}  // namespace vantorin

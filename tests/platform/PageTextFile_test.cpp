#include "platform/PageTextFile.h"

#include <gtest/gtest.h>

#include "tests/support/TempDir.h"

namespace vantorin {

TEST(VisiblePageText, ReadsTheFileAndGivesNothingForAMissingOne) {
    testing::TempDir dir;
    testing::WriteNativeFile(dir.NativePath("p.html"), "<title>x</title><p>Saved page</p>");
    EXPECT_EQ(VisiblePageText(dir.NativePath("p.html")), "Saved page");
    EXPECT_EQ(VisiblePageText(dir.NativePath("missing.html")), "");
}

}  // namespace vantorin

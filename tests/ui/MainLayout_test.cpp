#include "ui/MainLayout.h"

#include "platform/gui/Twips.h"

#include <gtest/gtest.h>

namespace vantorin {
namespace {

TEST(MainLayout, ResizeStepsFollowTheWindowAndATooSmallOneKeepsTheLastSizes) {
    MainLayout l = DesignLayout();
    // Nothing overlaps at the designed size.
    EXPECT_LT(l.Text1.Left + l.Text1.Width, l.Picture2.Left);
    EXPECT_LT(l.Label9.Left + l.Label9.Width, l.txtMax.Left);

    ResizeLayout(l, 12000, 11000);
    EXPECT_EQ(l.List1.Height, 11000 - 2280 - l.Picture1.Height - 480);
    EXPECT_EQ(l.Label9.Left, l.txtMax.Left - 120 - l.Label9.Width);
    EXPECT_EQ(l.Label7.Left, l.txtMax.Left);
    EXPECT_EQ(l.Picture3.Left, l.Picture1.Width - l.Picture3.Width);

    // Just too low: the queue keeps its last height while the widths follow
    // (checked below, where a narrow window keeps them).
    const int listHeight = l.List1.Height;
    ResizeLayout(l, 4000, 2760 + l.Picture1.Height - 1);
    EXPECT_EQ(l.List1.Height, listHeight);
    EXPECT_EQ(l.Label6.Top, l.List1.Top + listHeight + 40);
    EXPECT_EQ(l.Picture1.Width, 4000 - 480);
    ResizeLayout(l, 4000, 2760 + l.Picture1.Height);  // exactly at the limit: 0 is allowed
    EXPECT_EQ(l.List1.Height, 0);

    // Very narrow: the widths stay, the positions still move (even below 0).
    ResizeLayout(l, 300, 100);
    EXPECT_EQ(l.Picture1.Width, 4000 - 480);
    EXPECT_EQ(l.List1.Width, 4000 - 360);
    EXPECT_EQ(l.Text1.Width, 4000 - l.Picture2.Width - 1440);
    EXPECT_EQ(l.txtMax.Left, 300 - l.txtMax.Width - 360);
    EXPECT_EQ(l.Picture2.Left, l.Text1.Left + l.Text1.Width + 120);
}

TEST(MainLayout, TwipsAndPixelsAt96And144Dpi) {
    struct Case {
        int twips, dpi, pixels;
    };
    for (const auto& [twips, dpi, pixels] :
         {Case{15, 96, 1}, Case{9600, 96, 640}, Case{9600, 144, 960}, Case{-360, 96, -24}}) {
        EXPECT_EQ(TwipsToPixels(twips, dpi), pixels) << twips << " at " << dpi;
        EXPECT_EQ(PixelsToTwips(pixels, dpi), twips) << pixels << " at " << dpi;
    }
}

}  // namespace
}  // namespace vantorin

#include "ui/MainLayout.h"

#include <gtest/gtest.h>

#include "platform/gui/Twips.h"

namespace vantorin {
namespace {

int Right(const TwipRect& r) {
    return r.Left + r.Width;
}

// Whatever the size, the panel, the toolbar and the connections box end on
// one right margin, the "Data In" column at the panel's end, and the status
// line stays as far above the window's bottom as designed, the queue taking
// the height between. A window too small for a step keeps that step's last
// size (exactly at the limit the queue may be 0 high).
TEST(MainLayout, ResizeKeepsTheDesignsLinesAndATooSmallWindowTheLastSizes) {
    MainLayout l = DesignLayout();
    EXPECT_LT(Right(l.Text1), l.Picture2.Left);
    EXPECT_LT(Right(l.Label9), l.txtMax.Left);
    const MainLayout design = l;
    const int minHeight = 2760 + l.Picture1.Height;
    const int sizes[][2] = {{12000, 11000}, {4000, minHeight - 1}, {4000, minHeight}, {300, 100}};
    for (const auto& [W, H] : sizes) {
        const MainLayout before = l;
        ResizeLayout(l, W, H);
        SCOPED_TRACE(::testing::Message() << W << "x" << H);
        EXPECT_TRUE(l.Picture1.Width >= 0 && l.List1.Width >= 0 && l.Text1.Width >= 0);
        EXPECT_EQ(Right(l.Picture2), Right(l.Picture1));
        EXPECT_EQ(Right(l.txtMax), W - (kFormWidth - Right(design.txtMax)));
        EXPECT_EQ(Right(l.List1) - Right(l.Picture1), Right(design.List1) - Right(design.Picture1));
        EXPECT_EQ(Right(l.Picture3), l.Picture1.Width);
        EXPECT_EQ(Right(l.Label9) - l.txtMax.Left, Right(design.Label9) - design.txtMax.Left);
        EXPECT_EQ(l.Label7.Left, l.txtMax.Left);
        EXPECT_EQ(l.List1.Height, H < minHeight ? before.List1.Height : H - minHeight);
        EXPECT_EQ(l.Label6.Top, l.List1.Top + l.List1.Height + 40);
    }
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

#include "ui/MainLayout.h"

#include <gtest/gtest.h>

namespace vantorin {
namespace {

TEST(MainLayout, DesignedFormIsTheResizeRulesAtTheDesignedSize) {
    MainLayout d = DesignLayout();
    const MainLayout before = d;
    ResizeLayout(d, kFormWidth, kFormHeight);
    EXPECT_EQ(d.Picture1.Width, before.Picture1.Width);
    EXPECT_EQ(d.List1.Height, before.List1.Height);
    EXPECT_EQ(d.Picture2.Left, before.Picture2.Left);
    // Nothing overlaps at the designed size: Text1 ends before Picture2,
    // Label9 before txtMax, and the status line sits under the queue.
    EXPECT_LT(d.Text1.Left + d.Text1.Width, d.Picture2.Left);
    EXPECT_LT(d.Label9.Left + d.Label9.Width, d.txtMax.Left);
    EXPECT_GT(d.List1.Height, 0);
}

TEST(MainLayout, EveryStepFollowsTheWindowSize) {
    struct Case {
        int W, H;
    };
    for (const Case c : {Case{9600, 9900}, Case{12000, 11000}, Case{20000, 15000}}) {
        SCOPED_TRACE(c.W);
        MainLayout l = DesignLayout();
        ResizeLayout(l, c.W, c.H);
        EXPECT_EQ(l.Picture1.Width, c.W - 480);
        EXPECT_EQ(l.List1.Width, c.W - 360);
        EXPECT_EQ(l.txtMax.Left, c.W - l.txtMax.Width - 360);
        EXPECT_EQ(l.Label9.Left, l.txtMax.Left - 120 - l.Label9.Width);
        EXPECT_EQ(l.Label7.Left, l.txtMax.Left);
        EXPECT_EQ(l.List1.Height, c.H - 2280 - l.Picture1.Height - 480);
        EXPECT_EQ(l.Text1.Width, c.W - l.Picture2.Width - 1440);
        EXPECT_EQ(l.Picture2.Left, l.Text1.Left + l.Text1.Width + 120);
        EXPECT_EQ(l.Label6.Top, l.List1.Top + l.List1.Height + 40);
        EXPECT_EQ(l.Picture3.Left, l.Picture1.Width - l.Picture3.Width);
    }
}

TEST(MainLayout, ASizeThatWouldBeNegativeKeepsItsLastValueAndTheOtherStepsRun) {
    MainLayout l = DesignLayout();
    ResizeLayout(l, 12000, 11000);
    const int listHeight = l.List1.Height;

    // Just below 2760 twips plus the panel: the queue keeps its last height
    // while the widths, still possible, follow.
    ResizeLayout(l, 4000, 2760 + l.Picture1.Height - 1);
    EXPECT_EQ(l.List1.Height, listHeight);
    EXPECT_EQ(l.Label6.Top, l.List1.Top + listHeight + 40);
    EXPECT_EQ(l.Picture1.Width, 4000 - 480);
    EXPECT_EQ(l.Text1.Width, 4000 - l.Picture2.Width - 1440);

    // Exactly at the limit the height is 0, which is allowed.
    ResizeLayout(l, 4000, 2760 + l.Picture1.Height);
    EXPECT_EQ(l.List1.Height, 0);

    // Very narrow: the widths stay, the positions still move (even below 0).
    ResizeLayout(l, 300, 100);
    EXPECT_EQ(l.Picture1.Width, 4000 - 480);
    EXPECT_EQ(l.List1.Width, 4000 - 360);
    EXPECT_EQ(l.Text1.Width, 4000 - l.Picture2.Width - 1440);
    EXPECT_EQ(l.List1.Height, 0);
    EXPECT_EQ(l.txtMax.Left, 300 - l.txtMax.Width - 360);
    EXPECT_LT(l.txtMax.Left, 0);
    EXPECT_EQ(l.Picture2.Left, l.Text1.Left + l.Text1.Width + 120);
}

TEST(MainLayout, TwipsAndPixelsAt96And144Dpi) {
    struct Case {
        int twips, dpi, pixels;
    };
    for (const Case c : {Case{1440, 96, 96}, Case{15, 96, 1}, Case{9600, 96, 640},
                         Case{9600, 144, 960}, Case{-360, 96, -24}, Case{0, 96, 0}}) {
        EXPECT_EQ(TwipsToPixels(c.twips, c.dpi), c.pixels) << c.twips << " at " << c.dpi;
        EXPECT_EQ(PixelsToTwips(c.pixels, c.dpi), c.twips) << c.pixels << " at " << c.dpi;
    }
}

}  // namespace
}  // namespace vantorin

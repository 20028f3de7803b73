#include "ui/MainLayout.h"

#include <gtest/gtest.h>

#include <tuple>

namespace vantorin {
namespace {

int Right(const TwipRect& r) {
    return r.Left + r.Width;
}

// The lines the resize rules keep, in twips: the panel, the toolbar and the
// connections box end 360 from the right, the queue 240; the address box
// ends 120 before the toolbar; the "Data In" column ends with the panel; the
// connections question ends 120 before its box and the caption starts under
// it; the queue ends 1005 above the window's bottom and the status line
// starts 965 above it.
auto Lines(const MainLayout& l, int W, int H) {
    return std::make_tuple(W - Right(l.Picture1), W - Right(l.Picture2), W - Right(l.List1),
                           W - Right(l.txtMax), l.Picture2.Left - Right(l.Text1),
                           l.Picture1.Width - Right(l.Picture3), l.txtMax.Left - Right(l.Label9),
                           l.Label7.Left - l.txtMax.Left, H - l.List1.Top - l.List1.Height,
                           H - l.Label6.Top);
}

// A window too small for a step keeps that step's last size; exactly at the
// limit the queue may be 0 high.
TEST(MainLayout, ResizeKeepsTheDesignsLinesAndATooSmallWindowTheLastSizes) {
    MainLayout l = DesignLayout();
    const auto designed = std::make_tuple(360, 360, 240, 360, 120, 0, 120, 0, 1005, 965);
    EXPECT_EQ(Lines(l, kFormWidth, kFormHeight), designed);
    ResizeLayout(l, 12000, 11000);
    EXPECT_EQ(Lines(l, 12000, 11000), designed);

    const int minHeight = 11000 - l.List1.Height;
    const auto kept = std::make_tuple(l.Picture1.Width, l.Text1.Width, l.List1.Height);
    ResizeLayout(l, 300, minHeight - 1);
    EXPECT_EQ(std::make_tuple(l.Picture1.Width, l.Text1.Width, l.List1.Height), kept);
    ResizeLayout(l, 4000, minHeight);
    EXPECT_EQ(l.List1.Height, 0);
}

}  // namespace
}  // namespace vantorin

#include "ui/MainLayout.h"

namespace vantorin {

namespace {

void SetSize(int& field, int value) {
    if (value >= 0) field = value;  // a negative size is refused; the old one stays
}

}  // namespace

MainLayout DesignLayout() {
    MainLayout d;
    d.Command1 = {120, 120, 735, 375};
    d.Text1 = {960, 135, 6225, 345};
    d.Picture2 = {7305, 120, 1935, 375};
    d.Command2 = {0, 0, 615, 375};
    d.Command3 = {660, 0, 615, 375};
    d.Command4 = {1320, 0, 615, 375};

    // The panel holds the headings line and the 24 rows below it.
    const int panelHeight = kRowZeroTop + kRowHeight * 25 + 60;
    d.Picture1 = {120, 615, 9120, panelHeight};
    d.Picture3 = {7560, 0, 1560, panelHeight};
    d.ConnectionsHeading = {420, kRowZeroTop, 3000, kRowHeight};
    d.DataInHeading = {120, kRowZeroTop, 1380, kRowHeight};
    d.RowNumber = {60, kRowZeroTop, 300, kRowHeight};
    d.RowStatus = {420, kRowZeroTop, 9000, kRowHeight};
    d.RowSize = {120, kRowZeroTop, 1380, kRowHeight};
    d.RowReceived = {120, kRowZeroTop, 1380, kRowHeight};

    const int below = d.Picture1.Top + d.Picture1.Height;
    d.Label2 = {120, below + 150, 1215, 240};
    d.Label3 = {1380, below + 150, 1455, 240};
    d.Label4 = {2880, below + 150, 2055, 240};
    d.Label1 = {120, below + 450, 1215, 240};
    d.Label5 = {1380, below + 450, 1455, 240};
    d.txtMax = {8385, below + 120, 855, 315};
    d.Label9 = {6090, below + 165, 2175, 240};
    d.Label7 = {8385, below + 480, 855, 240};
    d.Label8 = {120, below + 900, 2400, 240};
    d.List1 = {120, below + 1140, 9240, 0};
    d.Label6 = {120, 0, 9000, 240};
    ResizeLayout(d, kFormWidth, kFormHeight);
    return d;
}

void ResizeLayout(MainLayout& l, int W, int H) {
    SetSize(l.Picture1.Width, W - 360 - 120);
    SetSize(l.List1.Width, W - 360);
    l.txtMax.Left = W - l.txtMax.Width - 360;
    l.Label9.Left = l.txtMax.Left - 120 - l.Label9.Width;
    l.Label7.Left = l.txtMax.Left;
    SetSize(l.List1.Height, H - 2280 - l.Picture1.Height - 480);
    SetSize(l.Text1.Width, W - l.Picture2.Width - 1440);
    l.Picture2.Left = l.Text1.Left + l.Text1.Width + 120;
    l.Label6.Top = l.List1.Top + l.List1.Height + 40;
    l.Picture3.Left = l.Picture1.Width - l.Picture3.Width;
}

}  // namespace vantorin

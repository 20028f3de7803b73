// The main window's geometry in twips (1440 to the inch): the designed
// positions and the resize rules. Plain numbers, so the rules are tested
// without a window; frmMain converts to pixels with the screen's DPI.
#pragma once

namespace vantorin {

struct TwipRect {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
};

// Designed form size (width and height of the window, menu bar included).
inline constexpr int kFormWidth = 9600;
inline constexpr int kFormHeight = 9900;

// One connection row: its labels are this tall and stack without gaps.
inline constexpr int kRowHeight = 210;
inline constexpr int kRowZeroTop = 30;  // the designed row 0, level with the headings

// The controls that the resize rules move, and those placed once. Positions of
// controls inside Picture1 (rows, headings, Picture3) are relative to
// Picture1; Command2..4 are relative to Picture2; k and k2 to Picture3.
struct MainLayout {
    TwipRect Command1, Text1, Picture2;
    TwipRect Command2, Command3, Command4;
    TwipRect Picture1, Picture3;
    TwipRect ConnectionsHeading, DataInHeading;
    TwipRect RowNumber, RowStatus, RowSize, RowReceived;  // row 0, the designed row
    TwipRect Label2, Label3, Label4, Label1, Label5;
    TwipRect Label9, txtMax, Label7;
    TwipRect Label8, List1, Label6;
};

MainLayout DesignLayout();

// The resize rules, in their order, for a window of W x H twips. A step that
// would give a negative width or height is skipped: the control keeps its
// previous size and the later steps still run.
void ResizeLayout(MainLayout& layout, int W, int H);

}  // namespace vantorin

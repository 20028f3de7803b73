// The main window's geometry in twips (1440 to the inch): the designed
// positions and the resize rules. Plain numbers, so the rules are tested
// without a window; MainWindow converts to pixels with the screen's DPI.
#pragma once

namespace vantorin {

struct TwipRect {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
};

// Designed window size (width and height, menu bar included).
inline constexpr int kFormWidth = 9600;
inline constexpr int kFormHeight = 9900;

// One connection row: its labels are this tall and stack without gaps, the
// first one below the headings.
inline constexpr int kRowHeight = 210;
inline constexpr int kHeadingsTop = 30;

// The controls that the resize rules move, and those placed once. Inside the
// connection panel (rows, headings, the "Data In" column) positions are
// relative to the panel; the stop, filters and explore buttons to the tool
// bar; a row's size and received labels to the "Data In" column. The rows'
// rectangles are those of the headings line; row n lies n rows below it.
struct MainLayout {
    TwipRect startButton, address, toolbar;
    TwipRect stopButton, filtersButton, exploreButton;
    TwipRect connectionPanel, dataInColumn;
    TwipRect connectionsHeading, dataInHeading;
    TwipRect rowNumber, rowStatus, rowSize, rowReceived;
    TwipRect downloadedLabel, downloadedCount, bytesCount, queuedLabel, queuedCount;
    TwipRect connectionsQuestion, connectionsBox, connectionsFooter;
    TwipRect queueHeading, queue, statusLine;
};

MainLayout DesignLayout();

// The resize rules, in their order, for a window of W x H twips. A step that
// would give a negative width or height is skipped: the control keeps its
// previous size and the later steps still run.
void ResizeLayout(MainLayout& layout, int W, int H);

}  // namespace vantorin

#include "ui/MainLayout.h"

namespace vantorin {

namespace {

void SetSize(int& field, int value) {
    if (value >= 0) field = value;  // a negative size is refused; the old one stays
}

}  // namespace

MainLayout DesignLayout() {
    MainLayout d;
    d.startButton = {120, 120, 735, 375};
    d.address = {960, 135, 6225, 345};
    d.toolbar = {7305, 120, 1935, 375};
    d.stopButton = {0, 0, 615, 375};
    d.filtersButton = {660, 0, 615, 375};
    d.exploreButton = {1320, 0, 615, 375};

    // The panel holds the headings line and the 24 rows below it.
    const int panelHeight = kHeadingsTop + kRowHeight * 25 + 60;
    d.connectionPanel = {120, 615, 9120, panelHeight};
    d.dataInColumn = {7560, 0, 1560, panelHeight};
    d.connectionsHeading = {420, kHeadingsTop, 3000, kRowHeight};
    d.dataInHeading = {120, kHeadingsTop, 1380, kRowHeight};
    d.rowNumber = {60, kHeadingsTop, 300, kRowHeight};
    d.rowStatus = {420, kHeadingsTop, 9000, kRowHeight};
    d.rowSize = {120, kHeadingsTop, 1380, kRowHeight};
    d.rowReceived = {120, kHeadingsTop, 1380, kRowHeight};

    const int below = d.connectionPanel.Top + d.connectionPanel.Height;
    d.downloadedLabel = {120, below + 150, 1215, 240};
    d.downloadedCount = {1380, below + 150, 1455, 240};
    d.bytesCount = {2880, below + 150, 2055, 240};
    d.queuedLabel = {120, below + 450, 1215, 240};
    d.queuedCount = {1380, below + 450, 1455, 240};
    d.connectionsBox = {8385, below + 120, 855, 315};
    d.connectionsQuestion = {6090, below + 165, 2175, 240};
    d.connectionsFooter = {8385, below + 480, 855, 240};
    d.queueHeading = {120, below + 900, 2400, 240};
    d.queue = {120, below + 1140, 9240, 0};
    d.statusLine = {120, 0, 9000, 240};
    ResizeLayout(d, kFormWidth, kFormHeight);
    return d;
}

void ResizeLayout(MainLayout& l, int W, int H) {
    SetSize(l.connectionPanel.Width, W - 360 - 120);
    SetSize(l.queue.Width, W - 360);
    l.connectionsBox.Left = W - l.connectionsBox.Width - 360;
    l.connectionsQuestion.Left = l.connectionsBox.Left - 120 - l.connectionsQuestion.Width;
    l.connectionsFooter.Left = l.connectionsBox.Left;
    SetSize(l.queue.Height, H - 2280 - l.connectionPanel.Height - 480);
    SetSize(l.address.Width, W - l.toolbar.Width - 1440);
    l.toolbar.Left = l.address.Left + l.address.Width + 120;
    l.statusLine.Top = l.queue.Top + l.queue.Height + 40;
    l.dataInColumn.Left = l.connectionPanel.Width - l.dataInColumn.Width;
}

}  // namespace vantorin

// Forms are designed in twips (1440 to the inch); widgets take pixels at the
// screen's dots per inch, across and down.
#pragma once

#include <QWidget>
#include <cmath>

namespace vantorin {

inline int TwipsToPixels(double twips, int dpi) {
    return static_cast<int>(std::lround(twips * dpi / 1440.0));
}

inline int PixelsToTwips(int pixels, int dpi) {
    return dpi > 0 ? static_cast<int>(std::lround(pixels * 1440.0 / dpi)) : 0;
}

// A width across `w` in pixels.
inline int Twips(const QWidget& w, double twips) {
    return TwipsToPixels(twips, w.logicalDpiX());
}

inline void PlaceTwips(QWidget& w, double left, double top, double width, double height) {
    const int dx = w.logicalDpiX();
    const int dy = w.logicalDpiY();
    w.setGeometry(TwipsToPixels(left, dx), TwipsToPixels(top, dy), TwipsToPixels(width, dx),
                  TwipsToPixels(height, dy));
}

}  // namespace vantorin

// Form geometry is designed in twips (1440 to the inch); widgets take pixels.
#pragma once

#include <QRect>
#include <QWidget>
#include <cmath>

namespace vantorin {

inline int Twips(const QWidget& w, double twips) {
    return static_cast<int>(std::lround(twips * w.logicalDpiX() / 1440.0));
}
inline void PlaceTwips(QWidget& w, double left, double top, double width, double height) {
    w.setGeometry(Twips(w, left), Twips(w, top), Twips(w, width), Twips(w, height));
}

}  // namespace vantorin

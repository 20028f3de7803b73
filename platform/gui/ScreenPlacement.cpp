#include "platform/gui/ScreenPlacement.h"

#include <algorithm>

namespace vantorin {

QPoint CentredOver(const QRect& over, const QSize& size) {
    return over.center() - QPoint(size.width() / 2, size.height() / 2);
}

QPoint KeptInside(const QRect& frame, const QRect& available) {
    const int x =
        std::max(std::min(frame.x(), available.right() + 1 - frame.width()), available.x());
    const int y =
        std::max(std::min(frame.y(), available.bottom() + 1 - frame.height()), available.y());
    return {x, y};
}

}  // namespace vantorin

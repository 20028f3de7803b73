// Where a window goes on the screen: centred over another one, and moved back
// inside the screen's available area (taskbars and panels left out) when it
// would leave it. Rectangles are frames, decorations included.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace vantorin {

// The top-left corner that centres a frame of `size` over `over`.
QPoint CentredOver(const QRect& over, const QSize& size);

// The top-left corner nearest to `frame`'s that keeps it inside `available`;
// a frame larger than the area keeps its top-left corner inside it.
QPoint KeptInside(const QRect& frame, const QRect& available);

}  // namespace vantorin

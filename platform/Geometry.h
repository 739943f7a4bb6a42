#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace platform {

/// Points in the coordinate system of the superview, origin at its bottom left: x() and y() name the lower
/// left corner. QRectF's own words top and bottom are not used above the toolkit.
using Point = QPointF;
using Size = QSizeF;
using Rect = QRectF;

/// The largest coordinate, in points, that the toolkit takes for a view.
inline constexpr double LargestCoordinate = (1 << 24) - 1;

} // namespace platform

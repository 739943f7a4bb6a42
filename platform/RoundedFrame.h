#pragma once

#include <QColor>
#include <QRectF>
#include <QString>

#include <functional>

class QPainter;

namespace platform {

/// A frame with round corners. A round line costs many times what a picture of it costs, and a window full of
/// panels consists of such frames; so each kind is painted once, and a frame of any size is put together from
/// the picture's corners and one point of each of its sides.
///
/// Thread: the main thread.
struct RoundedFrame
{
    /// What tells the kind from all others, with all that its look depends on but its size.
    QString kind;
    /// How far, in points, a corner reaches along both sides; further on nothing changes.
    int corner = 0;
    /// What fills the area between the corners and sides; invalid for nothing.
    QColor middle;
    /// Paints the frame of an area.
    std::function<void(QPainter &, const QRectF &)> paint;
};

/// Paints the frame of an area, as the frame's function would. It does so itself where pieces would not lie
/// on whole pixels, or the area is too small for them.
void paintFrame(QPainter &painter, const QRectF &area, const RoundedFrame &frame);

} // namespace platform

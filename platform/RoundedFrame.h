#pragma once

#include <QColor>
#include <QRectF>

#include <functional>
#include <string_view>

class QPainter;

namespace platform {

/// A frame with round corners. A round line costs many times what a picture of it costs, and a window full of
/// panels consists of such frames; so each kind is painted once, and a frame of any size is put together from
/// the picture's corners and one point of each of its sides. The pictures are kept, those of the sizes that
/// were painted lately too.
///
/// Thread: the main thread.
struct RoundedFrame
{
    /// What tells a kind from all others: a name, and all that its look depends on but its size.
    struct Kind
    {
        std::string_view name; ///< Must live for ever: a literal.
        QRgb line = 0;
        QRgb filling = 0;
        double radius = 0.0;
        double strength = 0.0;

        friend bool operator==(const Kind &, const Kind &) = default;
    };

    Kind kind;
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

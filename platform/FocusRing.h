#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

/// How a control shows that it has the keys. Thread: the main thread.
namespace platform::focusring {

/// The ring is two rings, one in the other: whatever colour lies beside them, one of both stands out.
inline constexpr double RingWidth = 2.0;
inline constexpr double Width = 2.0 * RingWidth;
[[nodiscard]] inline QColor outer()
{
    return {0, 38, 99};
}
[[nodiscard]] inline QColor inner()
{
    return {255, 255, 255};
}

/// Paints it along the inside of a control's rectangle, with sharp edges, so that it is taken neither for the
/// soft light around a button nor for a border.
void paint(QPainter &painter, const QRectF &area);

} // namespace platform::focusring

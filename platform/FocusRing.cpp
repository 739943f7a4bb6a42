#include "platform/FocusRing.h"

#include <QPainter>

namespace platform::focusring {

void paint(QPainter &painter, const QRectF &area)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setClipRect(area);
    const auto frame = [&painter](const QRectF &outside, const QColor &color) {
        // As four filled bars: a pen of two points lies on other pixels at each scale.
        painter.fillRect(QRectF(outside.topLeft(), QSizeF(outside.width(), RingWidth)), color);
        painter.fillRect(QRectF(outside.left(), outside.bottom() - RingWidth, outside.width(), RingWidth),
                         color);
        painter.fillRect(QRectF(outside.topLeft(), QSizeF(RingWidth, outside.height())), color);
        painter.fillRect(QRectF(outside.right() - RingWidth, outside.top(), RingWidth, outside.height()),
                         color);
    };
    frame(area, outer());
    frame(area.adjusted(RingWidth, RingWidth, -RingWidth, -RingWidth), inner());
    painter.restore();
}

} // namespace platform::focusring

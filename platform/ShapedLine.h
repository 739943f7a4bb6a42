#pragma once

#include <QRectF>
#include <QString>

class QPainter;

namespace platform {

/// Paints a text in one line, as QPainter::drawText does with the same rectangle, flags (an alignment, and
/// Qt::TextDontClip) and Qt::TextSingleLine. What was painted lately is not shaped again: most of what is
/// painted anew says what it has said before. Thread: the main thread.
void paintLine(QPainter &painter, const QRectF &area, int flags, const QString &text);

} // namespace platform

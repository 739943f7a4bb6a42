#pragma once

#include <QRectF>
#include <QString>

class QPainter;

namespace platform {

/// Paints one line of text as QPainter::drawText does with the same rectangle and flags (an alignment, and
/// Qt::TextDontClip). What was painted lately is not shaped again: most of what is painted anew says what it
/// has said before. Not for a text with line breaks. Thread: the main thread.
void paintLine(QPainter &painter, const QRectF &area, int flags, const QString &text);

} // namespace platform

#pragma once

#include <QFont>
#include <QSizeF>
#include <QStringList>

namespace platform {

/// A text as it is painted into a rectangle, line by line.
///
/// Thread: a plain value.
struct TextLines
{
    QStringList lines;
    /// False when the last line ends with an ellipsis for what did not fit.
    bool isWhole = true;
    /// Height of all lines together, of a line, and from a line to the next, in points.
    double height = 0.0;
    double lineHeight = 0.0;
    double lineSpacing = 0.0;

    /// Breaks a text between words, or within a word that is too long, into at most so many lines of the font
    /// as there is room for. 0 asks for no limit but the room. There is always room for one line.
    [[nodiscard]] static TextLines broken(const QString &text, const QFont &font, const QSizeF &room,
                                          int maximumNumberOfLines);
};

} // namespace platform

#pragma once

#include <QFont>
#include <QSizeF>
#include <QStringList>

namespace platform {

/// A text as it is painted into a rectangle, line by line. What it costs depends on the room, not on how long
/// the text is.
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
    /// What was broken lately is not measured again: the boxes of a panel say the same in the same room.
    [[nodiscard]] static TextLines broken(const QString &text, const QFont &font, const QSizeF &room,
                                          int maximumNumberOfLines);
    /// The text; where it is longer than any line of the width (in points) can be, it is cut a little behind
    /// that width and ends with an ellipsis.
    [[nodiscard]] static QString shortened(const QString &text, double width);
    /// The longest text of a tool tip, in UTF-16 units.
    static constexpr qsizetype MaximumToolTip = 2000;
    /// The whole text for a tool tip, in lines that fit a screen; longer than MaximumToolTip it is cut with
    /// an ellipsis.
    [[nodiscard]] static QString toolTip(const QString &text);

private:
    [[nodiscard]] static TextLines measured(const QString &text, const QFont &font, const QSizeF &room,
                                            int maximumNumberOfLines);
};

} // namespace platform

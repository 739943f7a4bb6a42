#include "platform/TextLines.h"

#include <QCache>
#include <QFontMetricsF>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr QChar Ellipsis(0x2026);
/// A tool tip breaks no lines itself.
constexpr qsizetype UnitsOfToolTipLine = 100;

/// So many UTF-16 units are no text that has room in a line: hardly a character is narrower than a point.
qsizetype moreThanOneLine(double width)
{
    return static_cast<qsizetype>(std::clamp(width, 0.0, 1e6)) + 1;
}

/// The first units of a text, without half a character at the end.
QString beginning(const QString &text, qsizetype units)
{
    QString begun = text.left(units);
    if (begun.size() < text.size() && !begun.isEmpty() && begun.back().isHighSurrogate())
        begun.chop(1);
    return begun;
}

/// Where the lines of a text begin, as if there were room for so many.
QList<qsizetype> lineStarts(const QString &text, const QFont &font, double width, qsizetype most)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QList<qsizetype> starts;
    qsizetype paragraphStart = 0;
    while (paragraphStart <= text.size() && starts.size() < most) {
        const qsizetype lineBreak = text.indexOf(QLatin1Char('\n'), paragraphStart);
        const qsizetype paragraphEnd = lineBreak < 0 ? text.size() : lineBreak;
        QTextLayout layout(text.mid(paragraphStart, paragraphEnd - paragraphStart), font);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid() && starts.size() < most;
             line = layout.createLine()) {
            line.setLineWidth(width);
            starts.append(paragraphStart + line.textStart());
        }
        layout.endLayout();
        paragraphStart = paragraphEnd + 1;
    }
    return starts;
}

qsizetype linesInRoom(double height, const QFontMetricsF &metrics)
{
    const double further = std::floor((height - metrics.height()) / metrics.lineSpacing());
    return 1 + static_cast<qsizetype>(std::max(0.0, further));
}

QString withoutTrailingSpace(QString line)
{
    while (!line.isEmpty() && line.back().isSpace())
        line.chop(1);
    return line;
}

/// Everything that lines depend on.
struct Wanted
{
    QString text;
    QFont font;
    QSizeF room;
    int maximumNumberOfLines;

    /// QSizeF's own comparison takes nearly equal for equal.
    friend bool operator==(const Wanted &a, const Wanted &b)
    {
        return a.maximumNumberOfLines == b.maximumNumberOfLines && a.room.width() == b.room.width() &&
               a.room.height() == b.room.height() && a.text == b.text && a.font == b.font;
    }
    friend size_t qHash(const Wanted &wanted, size_t seed = 0)
    {
        return qHashMulti(seed, wanted.text, wanted.font.pixelSize(), wanted.room.width(),
                          wanted.room.height(), wanted.maximumNumberOfLines);
    }
};

} // namespace

TextLines TextLines::broken(const QString &text, const QFont &font, const QSizeF &room,
                            int maximumNumberOfLines)
{
    constexpr int Remembered = 256;
    // A longer one is hardly met twice, and would be held for nothing.
    constexpr qsizetype LongestRemembered = 200;
    thread_local QCache<Wanted, TextLines> known(Remembered);
    if (text.size() > LongestRemembered)
        return measured(text, font, room, maximumNumberOfLines);
    const Wanted wanted{text, font, room, maximumNumberOfLines};
    if (const TextLines *lines = known.object(wanted))
        return *lines;
    TextLines lines = measured(text, font, room, maximumNumberOfLines);
    known.insert(wanted, new TextLines(lines));
    return lines;
}

TextLines TextLines::measured(const QString &text, const QFont &font, const QSizeF &room,
                              int maximumNumberOfLines)
{
    const QFontMetricsF metrics(font);
    const double width = std::max(0.0, room.width());
    qsizetype limit = linesInRoom(room.height(), metrics);
    if (maximumNumberOfLines > 0)
        limit = std::min<qsizetype>(limit, maximumNumberOfLines);

    const QString possible = beginning(text, limit * moreThanOneLine(width));
    // One line more than there is room for tells whether the text goes on.
    const QList<qsizetype> starts = lineStarts(possible, font, width, limit + 1);
    const bool isTooLong = starts.size() > limit || possible.size() < text.size();
    const qsizetype count = std::min(limit, starts.size());
    TextLines result;
    for (qsizetype i = 0; i + 1 < count; ++i)
        result.lines.append(withoutTrailingSpace(possible.mid(starts[i], starts[i + 1] - starts[i])));
    if (count > 0) {
        QString rest = possible.mid(starts[count - 1]).replace(QLatin1Char('\n'), QLatin1Char(' '));
        rest = withoutTrailingSpace(rest);
        const bool isCut = possible.size() < text.size();
        const QString line = isCut ? rest + Ellipsis : rest;
        // What was broken into lines fits as it is; only what had to be left together can be too long.
        const QString shown =
            isTooLong ? metrics.elidedText(shortened(line, width), Qt::ElideRight, width) : line;
        result.isWhole = shown == rest;
        result.lines.append(shown);
    }
    result.lineHeight = metrics.height();
    result.lineSpacing = metrics.lineSpacing();
    result.height =
        metrics.height() + metrics.lineSpacing() * static_cast<double>(std::max<qsizetype>(0, count - 1));
    return result;
}

QString TextLines::shortened(const QString &text, double width)
{
    const qsizetype units = moreThanOneLine(width);
    return text.size() <= units ? text : beginning(text, units) + Ellipsis;
}

QString TextLines::toolTip(const QString &text)
{
    const QString shown = text.size() <= MaximumToolTip ? text : beginning(text, MaximumToolTip) + Ellipsis;
    QStringList lines;
    for (const QString &paragraph : shown.split(QLatin1Char('\n'))) {
        QString rest = paragraph;
        while (rest.size() > UnitsOfToolTipLine) {
            const qsizetype blank = rest.lastIndexOf(QLatin1Char(' '), UnitsOfToolTipLine);
            const QString line = blank > 0 ? rest.left(blank) : beginning(rest, UnitsOfToolTipLine);
            lines.append(line);
            rest.remove(0, blank > 0 ? blank + 1 : line.size());
        }
        lines.append(rest);
    }
    const QString tip = lines.join(QLatin1Char('\n'));
    // A text that looks like markup is to be read as it was written.
    // Escaped here: Qt::convertFromPlainText leaves "&lt;" what it is.
    return Qt::mightBeRichText(tip)
               ? QStringLiteral("<p style=\"white-space:pre\">%1</p>").arg(tip.toHtmlEscaped())
               : tip;
}

} // namespace platform

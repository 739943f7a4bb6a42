#include "platform/TextLines.h"

#include <QFontMetricsF>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

/// Where the lines of a text begin, as if there were room for all of them.
QList<qsizetype> lineStarts(const QString &text, const QFont &font, double width)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QList<qsizetype> starts;
    qsizetype paragraphStart = 0;
    for (const QString &paragraph : text.split(QLatin1Char('\n'))) {
        QTextLayout layout(paragraph, font);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            starts.append(paragraphStart + line.textStart());
        }
        layout.endLayout();
        paragraphStart += paragraph.size() + 1;
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

} // namespace

TextLines TextLines::broken(const QString &text, const QFont &font, const QSizeF &room,
                            int maximumNumberOfLines)
{
    const QFontMetricsF metrics(font);
    const double width = std::max(0.0, room.width());
    qsizetype limit = linesInRoom(room.height(), metrics);
    if (maximumNumberOfLines > 0)
        limit = std::min<qsizetype>(limit, maximumNumberOfLines);

    const QList<qsizetype> starts = lineStarts(text, font, width);
    const qsizetype count = std::min(limit, starts.size());
    TextLines result;
    for (qsizetype i = 0; i + 1 < count; ++i)
        result.lines.append(withoutTrailingSpace(text.mid(starts[i], starts[i + 1] - starts[i])));
    if (count > 0) {
        QString rest = text.mid(starts[count - 1]);
        rest = withoutTrailingSpace(rest.replace(QLatin1Char('\n'), QLatin1Char(' ')));
        // What was broken into lines fits as it is; only what had to be left together can be too long.
        const QString shown = starts.size() > limit ? metrics.elidedText(rest, Qt::ElideRight, width) : rest;
        result.isWhole = shown == rest;
        result.lines.append(shown);
    }
    result.lineHeight = metrics.height();
    result.lineSpacing = metrics.lineSpacing();
    result.height =
        metrics.height() + metrics.lineSpacing() * static_cast<double>(std::max<qsizetype>(0, count - 1));
    return result;
}

} // namespace platform

#include "platform/ShapedLine.h"

#include <QCache>
#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainter>
#include <QStaticText>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr int MostLines = 256;
/// A longer one is hardly met twice, and would be held for nothing.
constexpr qsizetype LongestKept = 200;

struct Wanted
{
    QString text;
    QFont font;

    friend bool operator==(const Wanted &, const Wanted &) = default;
};

size_t qHash(const Wanted &wanted, size_t seed)
{
    return qHashMulti(seed, wanted.text, wanted.font);
}

struct Shaped
{
    QStaticText line;
    /// By this it is aligned; the letters themselves may reach beyond.
    double advance = 0.0;
    /// Letters of other fonts may be higher, and stand elsewhere in the line; line breaks make several of it.
    bool isPlain = false;
};

QCache<Wanted, Shaped> &known()
{
    static QCache<Wanted, Shaped> instance(MostLines);
    return instance;
}

/// What was shaped holds on to fonts, which go with the application.
void forget()
{
    known().clear();
}

Shaped shapedAnew(const Wanted &wanted)
{
    const QFontMetricsF metrics(wanted.font);
    Shaped shaped{QStaticText(wanted.text), metrics.horizontalAdvance(wanted.text)};
    shaped.line.setTextFormat(Qt::PlainText);
    shaped.line.setTextOption(QTextOption(Qt::AlignLeft));
    shaped.line.prepare({}, wanted.font);
    // The toolkit paints some control characters as blanks, and lets others be.
    const bool hasControls =
        std::ranges::any_of(wanted.text, [](QChar each) { return each.category() == QChar::Other_Control; });
    shaped.isPlain = !hasControls && std::abs(shaped.line.size().height() - metrics.height()) < 1.0;
    return shaped;
}

const Shaped &shapedLately(const Wanted &wanted)
{
    if (const Shaped *found = known().object(wanted))
        return *found;
    if (known().isEmpty())
        qAddPostRoutine(forget);
    auto *made = new Shaped(shapedAnew(wanted));
    known().insert(wanted, made);
    return *made;
}

/// How far along so much room something of such a length begins.
double begin(double room, double length, bool isCentred, bool isAtEnd)
{
    if (isCentred)
        return (room - length) / 2.0;
    return isAtEnd ? room - length : 0.0;
}

} // namespace

void paintLine(QPainter &painter, const QRectF &area, int flags, const QString &text)
{
    if (text.isEmpty())
        return;
    if (text.size() > LongestKept || painter.layoutDirection() == Qt::RightToLeft || text.isRightToLeft()) {
        painter.drawText(area, flags | Qt::TextSingleLine, text);
        return;
    }
    const Shaped &shaped = shapedLately({text, painter.font()});
    const bool isCentred = flags & Qt::AlignHCenter;
    const bool isAtRight = flags & Qt::AlignRight;
    const QSizeF size(shaped.line.size().width(), QFontMetricsF(painter.font()).height());
    const double below =
        begin(area.height(), size.height(), flags & Qt::AlignVCenter, flags & Qt::AlignBottom);
    const QRectF bounds(
        area.topLeft() + QPointF(begin(area.width(), size.width(), isCentred, isAtRight), below), size);
    if (!shaped.isPlain || (!(flags & Qt::TextDontClip) && !area.contains(bounds))) {
        painter.drawText(area, flags | Qt::TextSingleLine, text);
        return;
    }
    painter.drawStaticText(area.topLeft() +
                               QPointF(begin(area.width(), shaped.advance, isCentred, isAtRight), below),
                           shaped.line);
}

} // namespace platform

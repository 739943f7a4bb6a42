#include "station/window/BadgeText.h"

#include "platform/ShapedLine.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QTextLayout>

#include <utility>

namespace station {
namespace {

/// More than the lines can hold; a text of a megabyte is not laid out for what nobody sees of it.
constexpr int MostCharacters = 1000;
constexpr double SmallLetters = 0.8;

} // namespace

BadgeText::BadgeText(QString text, const QFont &font)
    : m_text(std::move(text))
    , m_font(font)
    , m_smallFont(font)
{
    m_smallFont.setPixelSize(static_cast<int>(QFontInfo(font).pixelSize() * SmallLetters));
    if (m_text.size() > MostCharacters)
        m_text = m_text.left(MostCharacters) + QChar(0x2026);
    m_text.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

int BadgeText::width() const
{
    return QFontMetrics(m_font).horizontalAdvance(m_text);
}

int BadgeText::heightFor(int width) const
{
    return static_cast<int>(lines(width).size()) * QFontMetrics(fontFor(width)).height();
}

int BadgeText::widthOfTwoLines() const
{
    const QFontMetrics metrics(m_smallFont);
    int best = width();
    for (qsizetype blank = m_text.indexOf(QLatin1Char(' ')); blank >= 0;
         blank = m_text.indexOf(QLatin1Char(' '), blank + 1)) {
        best = qMin(best, qMax(metrics.horizontalAdvance(m_text.left(blank)),
                               metrics.horizontalAdvance(m_text.mid(blank + 1))));
    }
    return best;
}

const QFont &BadgeText::fontFor(int width) const
{
    return this->width() <= width ? m_font : m_smallFont;
}

void BadgeText::draw(QPainter *painter, const QRect &rect) const
{
    painter->setFont(fontFor(rect.width()));
    const QStringList shown = lines(rect.width());
    const int flags = Qt::AlignLeft | Qt::AlignVCenter;
    if (shown.size() == 1)
        platform::paintLine(*painter, rect, flags, shown.first());
    else
        painter->drawText(rect, flags, shown.join(QLatin1Char('\n')));
}

QStringList BadgeText::lines(int width) const
{
    if (this->width() <= width)
        return {m_text};
    const QFontMetrics metrics(m_smallFont);
    QTextLayout layout(m_text, m_smallFont);
    QTextOption option;
    // Between words where that goes; a file's name is longer than a line.
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QStringList found;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        if (found.size() == MostLines - 1) {
            found.append(metrics.elidedText(m_text.mid(line.textStart()), Qt::ElideRight, width));
            break;
        }
        found.append(m_text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return found;
}

} // namespace station

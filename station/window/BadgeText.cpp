#include "station/window/BadgeText.h"

#include <QFontMetrics>
#include <QTextLayout>

#include <utility>

namespace station {
namespace {

/// More than the lines can hold; a text of a megabyte is not laid out for what nobody sees of it.
constexpr int MostCharacters = 1000;

} // namespace

BadgeText::BadgeText(QString text, const QFont &font)
    : m_text(std::move(text))
    , m_font(font)
{
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
    return static_cast<int>(lines(width).size()) * QFontMetrics(m_font).height();
}

void BadgeText::draw(QPainter *painter, const QRect &rect) const
{
    painter->setFont(m_font);
    painter->drawText(rect, Qt::AlignLeft | Qt::AlignVCenter, lines(rect.width()).join(QLatin1Char('\n')));
}

QStringList BadgeText::lines(int width) const
{
    const QFontMetrics metrics(m_font);
    if (metrics.horizontalAdvance(m_text) <= width)
        return {m_text};
    QTextLayout layout(m_text, m_font);
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

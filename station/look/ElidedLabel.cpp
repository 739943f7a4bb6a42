#include "station/look/ElidedLabel.h"

#include "station/look/PlainToolTip.h"

#include <QEvent>
#include <QFontMetricsF>

#include <cmath>

namespace station {
namespace {

/// Enough to tell that there is a text.
constexpr int FewCharacters = 3;
/// More than a line can show: a longer text is not measured to its end.
constexpr int MostCharacters = 2000;

QString oneLine(const QString &text)
{
    QString line = text.size() > MostCharacters ? text.left(MostCharacters) + QChar(0x2026) : text;
    return line.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

} // namespace

ElidedLabel::ElidedLabel(const QString &spokenName, const QString &text, QWidget *parent)
    : QLabel(parent)
    , m_spokenName(spokenName)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    setWholeText(text);
}

void ElidedLabel::setWholeText(const QString &text)
{
    m_whole = text;
    setAccessibleName(m_spokenName + QStringLiteral(": ") + text);
    fit();
    updateGeometry();
}

int ElidedLabel::widthAround() const
{
    const QMargins margins = contentsMargins();
    return margins.left() + margins.right() + 2 * margin() + 2;
}

QSize ElidedLabel::sizeHint() const
{
    // Eliding counts in fractions of a pixel.
    const int text =
        static_cast<int>(std::ceil(QFontMetricsF(font()).horizontalAdvance(oneLine(m_whole)))) + 1;
    return {text + widthAround(), QLabel::sizeHint().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {FewCharacters * fontMetrics().averageCharWidth() + widthAround(),
            QLabel::minimumSizeHint().height()};
}

void ElidedLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    fit();
}

void ElidedLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fit();
}

void ElidedLabel::fit()
{
    const QString shown =
        fontMetrics().elidedText(oneLine(m_whole), Qt::ElideRight, qMax(0, width() - widthAround()));
    setText(shown);
    setToolTip(shown == m_whole ? QString() : plainToolTip(m_whole));
}

} // namespace station

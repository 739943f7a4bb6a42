#include "station/window/ErrorButton.h"

#include "station/look/PlainToolTip.h"
#include "station/look/WindowLook.h"

#include <QPainter>

namespace station {
namespace {

constexpr int Letters = 14;
constexpr int Margin = 10;
constexpr int LeastWidth = 60;
constexpr int Height = 24;
constexpr double Corner = 4.0;

} // namespace

ErrorButton::ErrorButton(QWidget *parent)
    : QAbstractButton(parent)
{
    setObjectName(QStringLiteral("errors"));
    setFont(windowFont(Letters, true));
    setPalette(errorPalette(palette()));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFocusPolicy(Qt::TabFocus);
    tell();
}

void ErrorButton::add(int errors, const QString &newest)
{
    if (errors <= 0)
        return;
    m_errors += errors;
    m_newest = newest;
    tell();
}

void ErrorButton::forget()
{
    m_errors = 0;
    m_newest.clear();
    tell();
}

QString ErrorButton::wholeText() const
{
    if (m_errors == 0)
        return {};
    const QString count =
        m_errors == 1 ? QStringLiteral("1 error") : QStringLiteral("%1 errors").arg(m_errors);
    return QStringLiteral("%1 \u00b7 %2").arg(count, m_newest);
}

void ErrorButton::tell()
{
    setAccessibleName(QStringLiteral("Errors: ") + wholeText());
    setToolTip(plainToolTip(wholeText()));
    setVisible(m_errors > 0);
    update();
}

QSize ErrorButton::sizeHint() const
{
    return {LeastWidth, Height};
}

QSize ErrorButton::minimumSizeHint() const
{
    return {LeastWidth, Height};
}

void ErrorButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Button));
    painter.drawRoundedRect(rect(), Corner, Corner);
    painter.setPen(palette().color(QPalette::ButtonText));
    const QRect text = rect().adjusted(Margin, 0, -Margin, 0);
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(wholeText(), Qt::ElideRight, text.width()));
}

} // namespace station

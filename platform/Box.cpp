#include "platform/Box.h"

#include "platform/RoundedFrame.h"

#include <QPainter>

#include <algorithm>

namespace platform {

namespace {

constexpr double CornerRadius = 5.0;
constexpr double MinimumInset = 1.0;
/// Keeps the line below the text of a header that the frame's top edge reaches into.
constexpr double TopInset = 5.0;
constexpr int DarkBelow = 128;
const QColor BorderOnLight(0, 0, 0, 40);
const QColor BorderOnDark(255, 255, 255, 70);

RoundedFrame frameOfBox(const QColor &line, const QColor &filling)
{
    const auto paint = [line, filling](QPainter &painter, const QRectF &area) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(line, 1.0));
        painter.setBrush(filling);
        // Half a pixel inwards, so that a line of one pixel lies on pixels and not between them.
        painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), CornerRadius, CornerRadius);
    };
    return {{"box", line.rgba(), filling.rgba()}, static_cast<int>(CornerRadius) + 1, filling, paint};
}

} // namespace

Box::Box(QWidget *parent)
    : View(parent)
    , m_contentView(new View(static_cast<QWidget *>(this)))
{
    m_contentView->setAutoresizingMask(WidthSizable | HeightSizable);
}

Box::Box(const Rect &frame)
    : Box(static_cast<QWidget *>(nullptr))
{
    setFrame(frame);
}

void Box::setFillColor(const Color &color)
{
    m_fillColor = color;
    update();
    tellGroundChanged();
}

QColor Box::filling() const
{
    if (m_fillColor.alpha <= 0.0)
        return View::filling();
    // The window's own colour is a light one only where windows are light.
    const QColor window = palette().color(QPalette::Window);
    if (m_fillColor == Color::windowBackground() && window.lightness() < DarkBelow)
        return window;
    return m_fillColor.toQColor();
}

void Box::layout()
{
    // To set it anew would lay out what it holds, for nothing.
    if (m_contentView->frame() != bounds())
        m_contentView->setFrame(bounds());
}

/// Tiles stand side by side, so that a shadow outside the bounds would lie under the neighbours.
QRectF Box::shadowOutline() const
{
    const double inset = shadow() ? std::max(MinimumInset, shadow()->reach()) : MinimumInset;
    return QRectF(rect()).adjusted(inset, std::max(inset, TopInset), -inset, -inset);
}

void Box::paintEvent(QPaintEvent *event)
{
    {
        const bool isDark = palette().color(QPalette::Window).lightness() < DarkBelow;
        QPainter painter(this);
        paintFrame(painter, shadowOutline(),
                   frameOfBox(isDark ? BorderOnDark : BorderOnLight,
                              m_fillColor.alpha > 0.0 ? filling() : QColor(Qt::transparent)));
    }
    View::paintEvent(event);
}

} // namespace platform

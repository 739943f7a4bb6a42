#include "platform/Box.h"

#include <QPainter>

#include <algorithm>

namespace platform {

namespace {

constexpr double CornerRadius = 5.0;
constexpr double MinimumInset = 1.0;
/// Keeps the line below the text of a header that the frame's top edge reaches into.
constexpr double TopInset = 5.0;
const QColor BorderColor(0, 0, 0, 40);

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
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(BorderColor, 1.0));
        painter.setBrush(m_fillColor.toQColor());
        // Half a pixel inwards, so that a line of one pixel lies on pixels and not between them.
        painter.drawRoundedRect(shadowOutline().adjusted(0.5, 0.5, -0.5, -0.5), CornerRadius, CornerRadius);
    }
    View::paintEvent(event);
}

} // namespace platform

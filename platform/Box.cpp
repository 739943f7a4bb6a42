#include "platform/Box.h"

#include <QPainter>

namespace platform {

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
    if (m_contentView->frame() != bounds())
        m_contentView->setFrame(bounds());
}

void Box::paintEvent(QPaintEvent *event)
{
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(0, 0, 0, 40), 1.0));
        painter.setBrush(m_fillColor.toQColor());
        painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), 5.0, 5.0);
    }
    View::paintEvent(event);
}

} // namespace platform

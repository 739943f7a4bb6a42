#include "presentation/CollectionViewItemView.h"

#include "platform/Readable.h"

#include <QPainter>
#include <QPainterPath>

namespace interactive {

void CollectionViewItemView::paintEvent(QPaintEvent *event)
{
    View::paintEvent(event);
    if (!m_highlighted)
        return;
    const QRectF outer(rect());
    QPainterPath band;
    // The inner rectangle is cut out of the outer one: what stands in the tile is not painted over.
    band.setFillRule(Qt::OddEvenFill);
    band.addRect(outer);
    band.addRect(outer.adjusted(HighlightWidth, HighlightWidth, -HighlightWidth, -HighlightWidth));
    QPainter painter(this);
    painter.setClipPath(band);
    // The colour of labels is dark where the ground is light.
    painter.fillRect(outer, platform::readable::text(platform::Color::label().toQColor(), ground()));
}

} // namespace interactive

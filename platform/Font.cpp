#include "platform/Font.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace platform {

QFont Font::toQFont() const
{
    QFont font;
    // A point is a pixel here, whatever the screen says of its density; 0 pixels the toolkit refuses.
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
    font.setBold(bold);
    return font;
}

double Font::widthOf(const QString &text) const
{
    return QFontMetricsF(toQFont()).horizontalAdvance(text);
}

double Font::boundingHeight() const
{
    return QFontMetricsF(toQFont()).height();
}

} // namespace platform

#include "platform/Font.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace platform {

QFont Font::toQFont() const
{
    QFont font;
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

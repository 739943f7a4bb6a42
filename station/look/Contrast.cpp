#include "station/look/Contrast.h"

#include <algorithm>
#include <cmath>

namespace station {
namespace {

double linear(double part)
{
    // The curve of the sRGB colour space, and below the shares in which the eye takes red, green and blue for
    // brightness.
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    // The 0.05 stands for the light that any screen reflects: without it black would be infinitely far from
    // all.
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readableOn(const QColor &background, const QColor &wanted)
{
    if (contrast(background, wanted) >= ReadableContrast)
        return wanted;
    return contrast(background, Qt::black) >= contrast(background, Qt::white) ? Qt::black : Qt::white;
}

} // namespace station

#include "platform/Color.h"

#include <algorithm>

namespace platform {

QColor Color::toQColor() const
{
    // Colours are computed, and a doubled opacity may be more than 1.
    const auto part = [](double component) { return static_cast<float>(std::clamp(component, 0.0, 1.0)); };
    return QColor::fromRgbF(part(red), part(green), part(blue), part(alpha));
}

Color Color::fromQColor(const QColor &color)
{
    return {color.red() / 255.0, color.green() / 255.0, color.blue() / 255.0, color.alpha() / 255.0};
}

} // namespace platform

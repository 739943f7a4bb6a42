#pragma once

#include <QColor>
#include <QMetaType>

namespace platform {

/// A colour of device-independent RGB components and an opacity, each 0.0 to 1.0 and kept exactly as given.
///
/// Thread: a plain value.
struct Color
{
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    double alpha = 1.0;

    /// The same colour with another opacity.
    [[nodiscard]] Color withAlphaComponent(double newAlpha) const { return {red, green, blue, newAlpha}; }
    /// Rounded to what Qt paints with; components outside 0 to 1 are clamped.
    [[nodiscard]] QColor toQColor() const;
    [[nodiscard]] static Color fromQColor(const QColor &color);

    [[nodiscard]] static constexpr Color white() { return {1.0, 1.0, 1.0, 1.0}; }
    [[nodiscard]] static constexpr Color black() { return {0.0, 0.0, 0.0, 1.0}; }
    [[nodiscard]] static constexpr Color clear() { return {0.0, 0.0, 0.0, 0.0}; }
    [[nodiscard]] static constexpr Color standardRed() { return {1.0, 0.0, 0.0, 1.0}; }
    [[nodiscard]] static constexpr Color lightGray() { return {2.0 / 3.0, 2.0 / 3.0, 2.0 / 3.0, 1.0}; }
    [[nodiscard]] static constexpr Color systemGray()
    {
        return {142.0 / 255.0, 142.0 / 255.0, 147.0 / 255.0, 1.0};
    }
    [[nodiscard]] static constexpr Color systemYellow() { return {1.0, 204.0 / 255.0, 0.0, 1.0}; }
    [[nodiscard]] static constexpr Color systemBlue() { return {0.0, 122.0 / 255.0, 1.0, 1.0}; }
    /// The background of a window. A box filled with it, and a text in label(), follow the palette where that
    /// is dark.
    [[nodiscard]] static constexpr Color windowBackground()
    {
        return {236.0 / 255.0, 236.0 / 255.0, 236.0 / 255.0, 1.0};
    }
    /// The text of a label.
    [[nodiscard]] static constexpr Color label() { return {0.0, 0.0, 0.0, 0.85}; }

    friend bool operator==(const Color &, const Color &) = default;
};

} // namespace platform

Q_DECLARE_METATYPE(platform::Color)

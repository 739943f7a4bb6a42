#pragma once

#include <QFont>
#include <QString>

namespace platform {

/// The system font at a size in points; a point is one device-independent pixel, so a 15 point font is 15
/// high. The size is kept exactly; Qt gets it rounded to whole pixels.
///
/// Thread: a plain value.
struct Font
{
    double size = 13.0;
    bool bold = false;

    [[nodiscard]] QFont toQFont() const;
    /// Height in points of a box that holds any glyph of the font (ascent and descent).
    [[nodiscard]] double boundingHeight() const;
    /// Width in points of a text in one line.
    [[nodiscard]] double widthOf(const QString &text) const;

    [[nodiscard]] static Font system(double size) { return {size, false}; }
    [[nodiscard]] static Font boldSystem(double size) { return {size, true}; }

    friend bool operator==(const Font &, const Font &) = default;
};

} // namespace platform

#pragma once

#include <QColor>

namespace station {

/// The least contrast at which a text is read without effort.
inline constexpr double ReadableContrast = 4.5;

/// How well two opaque colours can be told apart: from 1 (not at all) to 21 (black on white), as the web's
/// accessibility guidelines count it.
[[nodiscard]] double contrast(const QColor &one, const QColor &other);

/// The wanted colour where it can be read on the background, otherwise black or white.
[[nodiscard]] QColor readableOn(const QColor &background, const QColor &wanted);

} // namespace station

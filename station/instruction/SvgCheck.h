#pragma once

#include <QByteArray>
#include <QString>

namespace station {

/// Why an SVG must not be drawn: it is no well-formed SVG, refers to something outside of itself, or means
/// so many elements that drawing them would not end in a reasonable time. Empty when it may.
///
/// Thread: any.
[[nodiscard]] QString svgProblem(const QByteArray &content);

} // namespace station

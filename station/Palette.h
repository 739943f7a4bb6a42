#pragma once

#include "station/StationConfig.h"

#include <optional>

namespace station {

/// The colours of a system that the configuration gives none: light backgrounds that neighbours can be told
/// apart by, with a dark text that is readable on each.
[[nodiscard]] SystemColors defaultColors(int systemIndex);

/// A colour as configurations write it: "#rrggbb", "#rrggbbaa" or a colour name of the SVG list; nothing for
/// any other text.
[[nodiscard]] std::optional<platform::Color> colorFromText(const QString &text);

} // namespace station

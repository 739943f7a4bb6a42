#pragma once

#include <QString>

#include <chrono>

namespace station {

/// A time as a clock counts it: "0:07", "12:34", from an hour on "1:00:00". Less than nothing counts as
/// nothing. Thread: any.
[[nodiscard]] QString timeText(std::chrono::seconds time);

} // namespace station

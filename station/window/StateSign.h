#pragma once

#include "station/window/SystemRow.h"

#include <QPainterPath>
#include <QRectF>

namespace station {

/// The sign of a state, by which it is told where its colour cannot be: a triangle for what runs, three dots
/// for what waits, a tick, a cross, an exclamation mark, a square for what was stopped, a ring for what is
/// idle. No two states have the same. It fills the rectangle (a square). Thread: any.
[[nodiscard]] QPainterPath stateSign(SystemState state, const QRectF &square);

} // namespace station

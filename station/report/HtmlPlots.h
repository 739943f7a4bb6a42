#pragma once

#include "station/report/Figures.h"

namespace station::report {

/// Any text as it may stand in a page, between tags and in an attribute's quotes.
[[nodiscard]] QString escaped(const QString &text);

/// A bar as wide as its place, in the parts of the outcomes; empty where there are none.
[[nodiscard]] QString outcomeBar(const Outcomes &outcomes);
/// A bar of so much of its place as the value is of the largest one.
[[nodiscard]] QString countBar(qint64 value, qint64 largest);
/// What the colours of outcomes stand for.
[[nodiscard]] QString outcomeLegend();
/// Runs over time: a bar a period, passed ones below, others above.
[[nodiscard]] QString coursePlot(const Course &course);

} // namespace station::report

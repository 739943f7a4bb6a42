#pragma once

#include "station/report/Figures.h"

#include <QDateTime>

namespace station::report {

/// What a page begins with, and no page of anybody else.
[[nodiscard]] QByteArray pageMark();

/// The figures as one page that needs nothing else: no script, no file beside it, no network.
[[nodiscard]] QString pageOf(const Figures &figures, const QDateTime &now);

} // namespace station::report

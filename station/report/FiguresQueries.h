#pragma once

#include "station/report/Figures.h"
#include "station/results/SqlConnection.h"

namespace station::report {

/// Asks a database of results, in one transaction. Errors: throws SqlError, also for a database of another
/// kind or of a newer version. One without any table has no results.
[[nodiscard]] Figures queryFigures(SqlConnection &connection, const QString &serial);

} // namespace station::report

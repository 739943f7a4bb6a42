#pragma once

#include "station/report/Figures.h"

namespace station::report {

/// Reads what a report says from a SQLite file of results, all of it at one moment, and leaves no trace: not
/// of a file that a station writes to meanwhile, nor of one in a folder that may not be written to.
///
/// `serial` is the entry whose answers are wanted; empty for none. Thread: any; there is an application.
/// Errors: throws StationError with "path: why", for tables of a newer version too.
[[nodiscard]] Figures readFigures(const QString &path, const QString &serial);

} // namespace station::report

#pragma once

#include <QStringList>

namespace station {

/// `station check FILE...`: prints a line for each problem. `arguments` begin with "check".
///
/// Thread: the main thread; there is an application. Returns the program's exit status: 0 without problems,
/// 1 with some. Errors: throws StationError for a wrong usage.
[[nodiscard]] int runCheck(const QStringList &arguments);

} // namespace station

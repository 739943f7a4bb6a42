#pragma once

#include <QStringList>

namespace station {

/// `station report FILE.sqlite`: what the results in a file say, as text, as CSV or as a page. `arguments`
/// begin with "report".
///
/// Thread: the main thread; there is an application. Returns the program's exit status: 0, or 1 when a serial
/// number that was asked for was not entered in any run. Errors: throws StationError when there is no report.
[[nodiscard]] int runReport(const QStringList &arguments);

} // namespace station

#pragma once

#include <QStringList>

namespace station {

/// `station new DIR`: writes a small station that runs, with its configuration, sequence, operator's script
/// and a page about them. `arguments` begin with "new".
///
/// Thread: any. Returns the program's exit status, 0. Errors: throws StationError for a wrong usage, and
/// where the folder holds one of the files already or cannot be written to; then no file was written or
/// changed, as far as the folder's file system lets them be taken back.
[[nodiscard]] int runNew(const QStringList &arguments);

} // namespace station

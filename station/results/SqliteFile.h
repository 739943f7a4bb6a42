#pragma once

#include "station/results/LockedFile.h"
#include "station/results/SqlConnection.h"

#include <chrono>
#include <functional>

namespace station {

/// How long a write waits for another program that has the file locked.
constexpr std::chrono::milliseconds UsualPatience{5000};

/// Whether a path of results means a database: one that ends with ".sqlite".
[[nodiscard]] bool isSqlitePath(const QString &path);

/// A connection to an SQLite file that can be read while it is written, and keeps what was committed whatever
/// happens to the program or the machine.
///
/// Thread: the one that made it. Errors: throws SqlError.
class SqliteConnection : public SqlConnection
{
public:
    SqliteConnection(const QString &path, std::chrono::milliseconds patience);
};

} // namespace station

#include "station/results/SqliteFile.h"

namespace station {

bool isSqlitePath(const QString &path)
{
    return path.endsWith(QLatin1String(".sqlite"), Qt::CaseInsensitive);
}

SqliteConnection::SqliteConnection(const QString &path, std::chrono::milliseconds patience)
    : SqlConnection(QStringLiteral("QSQLITE"))
{
    database().setDatabaseName(path);
    database().setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(patience.count()));
    open();
    // Looked at before anything is asked of it, so that a file of another kind is told as one.
    static_cast<void>(value(QStringLiteral("PRAGMA schema_version")));
    static_cast<void>(value(QStringLiteral("PRAGMA journal_mode = WAL")));
    run(QStringLiteral("PRAGMA synchronous = FULL"));
}

} // namespace station

#include "station/results/Schema.h"

namespace station::schema {

namespace {

/// The advisory lock that stations take one after another: any number that nobody else uses.
const QString Lock = QStringLiteral("SELECT pg_advisory_xact_lock(5428126943715087955)");

const QStringList FirstTables{
    QStringLiteral("CREATE TABLE runs (run TEXT PRIMARY KEY, station TEXT NOT NULL, station_id TEXT,"
                   " configuration TEXT NOT NULL, started TIMETYPE NOT NULL)"),
    QStringLiteral("CREATE TABLE sequences (run TEXT NOT NULL, sequence BIGINT NOT NULL,"
                   " script TEXT NOT NULL, system BIGINT, group_name TEXT, slot TEXT,"
                   " started TIMETYPE NOT NULL, ended TIMETYPE, outcome TEXT, value TEXT, message TEXT,"
                   " PRIMARY KEY (run, sequence))"),
    QStringLiteral("CREATE TABLE calls (run TEXT NOT NULL, sequence BIGINT NOT NULL, call BIGINT NOT NULL,"
                   " function TEXT NOT NULL, started TIMETYPE NOT NULL, ended TIMETYPE NOT NULL,"
                   " milliseconds BIGINT NOT NULL, result TEXT NOT NULL, clicked_button TEXT,"
                   " error_domain TEXT, error_code BIGINT, error_message TEXT,"
                   " PRIMARY KEY (run, sequence, call))"),
    QStringLiteral("CREATE TABLE answers (run TEXT NOT NULL, sequence BIGINT NOT NULL, call BIGINT NOT NULL,"
                   " position BIGINT NOT NULL, slot TEXT, label TEXT, value TEXT,"
                   " PRIMARY KEY (run, sequence, call, position))")};

const QStringList OperatorsAndRefusals{
    QStringLiteral("ALTER TABLE sequences ADD COLUMN traceback TEXT"),
    QStringLiteral("ALTER TABLE runs ADD COLUMN operator TEXT"),
    QStringLiteral("ALTER TABLE calls ADD COLUMN operator TEXT"),
    QStringLiteral("CREATE TABLE refusals (run TEXT NOT NULL, refusal BIGINT NOT NULL,"
                   " refused TIMETYPE NOT NULL, kind TEXT NOT NULL, text TEXT NOT NULL, system BIGINT,"
                   " group_name TEXT, slot TEXT, operator TEXT, PRIMARY KEY (run, refusal))")};

void climb(SqlConnection &connection, Dialect dialect, int version)
{
    refuseNewer(version);
    for (int next = version + 1; next <= Version; ++next) {
        for (const QString &statement : stepTo(next, dialect))
            connection.run(statement);
    }
}

void prepareFile(SqlConnection &connection)
{
    // At once for writing: of two who only looked, one would have to give up later.
    SqlTransaction transaction(connection, QStringLiteral("BEGIN IMMEDIATE"));
    const int version = connection.value(QStringLiteral("PRAGMA user_version")).toInt();
    const bool isNew = connection.value(QStringLiteral("SELECT count(*) FROM sqlite_master")).toInt() == 0;
    const int id = connection.value(QStringLiteral("PRAGMA application_id")).toInt();
    if (!isNew && id != ApplicationId)
        throw SqlError(QStringLiteral("the file holds something else than results"));
    climb(connection, Dialect::Sqlite, version);
    connection.run(QStringLiteral("PRAGMA user_version = %1").arg(Version));
    connection.run(QStringLiteral("PRAGMA application_id = %1").arg(ApplicationId));
    transaction.commit();
}

int versionOnServer(SqlConnection &connection)
{
    if (connection.value(QStringLiteral("SELECT to_regclass('results_schema')")).isNull())
        return 0;
    return connection.value(QStringLiteral("SELECT version FROM results_schema")).toInt();
}

void prepareServer(SqlConnection &connection)
{
    const QString encoding = connection.value(QStringLiteral("SHOW server_encoding")).toString();
    if (encoding != QLatin1String("UTF8"))
        throw SqlError(QStringLiteral("the database keeps text as %1; it must be UTF8").arg(encoding));
    const int before = versionOnServer(connection);
    refuseNewer(before);
    // Looked at without the lock first: stations that come later need not queue, nor may make tables.
    if (before == Version)
        return;
    SqlTransaction transaction(connection, QStringLiteral("BEGIN"));
    connection.run(Lock);
    // Not asked whether it is there: that may be answered from before the lock was had.
    connection.run(QStringLiteral("CREATE TABLE IF NOT EXISTS results_schema (version BIGINT NOT NULL)"));
    const int version = connection.value(QStringLiteral("SELECT version FROM results_schema")).toInt();
    climb(connection, Dialect::PostgreSql, version);
    connection.run(QStringLiteral("DELETE FROM results_schema"));
    connection.run(QStringLiteral("INSERT INTO results_schema VALUES (%1)").arg(Version));
    transaction.commit();
}

} // namespace

void refuseNewer(int version)
{
    if (version > Version) {
        throw SqlError(QStringLiteral("the results are of version %1, and this station knows up to %2")
                           .arg(version)
                           .arg(Version));
    }
}

QStringList stepTo(int version, Dialect dialect)
{
    const QString time =
        dialect == Dialect::Sqlite ? QStringLiteral("TEXT") : QStringLiteral("TIMESTAMPTZ(3)");
    QStringList statements = version == 1 ? FirstTables : OperatorsAndRefusals;
    return statements.replaceInStrings(QStringLiteral("TIMETYPE"), time);
}

void prepare(SqlConnection &connection, Dialect dialect)
{
    if (dialect == Dialect::Sqlite)
        prepareFile(connection);
    else
        prepareServer(connection);
}

} // namespace station::schema

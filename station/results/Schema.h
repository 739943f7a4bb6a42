#pragma once

#include "station/results/SqlConnection.h"

#include <QStringList>

namespace station::schema {

/// The version of the tables that this station writes.
constexpr int Version = 2;
/// Tells results from other SQLite files, for programs such as file(1) too: "KVRS".
constexpr int ApplicationId = 0x4b565253;

/// Which database it is. They differ in how a time is kept and where the version stands, and in nothing else.
enum class Dialect { Sqlite, PostgreSql };

/// Errors: throws SqlError for tables of a newer version than this station knows.
void refuseNewer(int version);

/// The statements that lead from the version before to this one; 1 makes the first tables.
[[nodiscard]] QStringList stepTo(int version, Dialect dialect);

/// Makes the tables where there are none, and brings older ones to this version, whole or not at all, whoever
/// else does so at the same moment.
///
/// Errors: throws SqlError, also for tables of a newer version and for a file that holds something else.
void prepare(SqlConnection &connection, Dialect dialect);

} // namespace station::schema

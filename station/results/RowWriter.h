#pragma once

#include "station/results/ResultRows.h"
#include "station/results/SqlConnection.h"

#include <map>

namespace station {

/// Writes rows of results into the tables of Schema. A row that is there already is left as it is, so that
/// whoever does not know whether rows arrived may write them once more.
///
/// Thread: the connection's. Ownership: refers to the connection, and is not used without it.
class RowWriter
{
public:
    explicit RowWriter(SqlConnection &connection)
        : m_connection(connection)
    {}

    /// Requires: a transaction, for rows that belong together. Errors: throws SqlError, also for a kind of
    /// row that there is none of, and for the end of a sequence that is not there.
    void write(const ResultRows &rows);

private:
    void write(const ResultRow &row);

    SqlConnection &m_connection;
    std::map<QString, QSqlQuery> m_queries; ///< Prepared when first used.
};

} // namespace station

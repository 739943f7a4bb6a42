#include "station/results/SqliteResults.h"

#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "station/StationError.h"
#include "station/results/Schema.h"

#include <fcntl.h>

namespace station {

namespace {

constexpr mode_t ReadableByAll = 0666;

} // namespace

SqliteResults::SqliteResults(const QString &path, std::chrono::milliseconds patience)
    : m_file(path, O_RDWR, ReadableByAll)
{
    QString why;
    queue().wait([this, patience, &why] {
        try {
            m_connection.emplace(m_file.path(), patience);
            schema::prepare(*m_connection, schema::Dialect::Sqlite);
            m_writer.emplace(*m_connection);
        } catch (...) {
            m_connection.reset();
            why = KVKTextOfException(std::current_exception());
        }
    });
    if (!why.isEmpty())
        throw StationError(QStringLiteral("%1: %2").arg(path, why));
}

SqliteResults::~SqliteResults()
{
    queue().wait([this] {
        m_writer.reset();
        m_connection.reset();
    });
}

void SqliteResults::keep(const ResultRows &rows)
{
    SqlTransaction transaction(*m_connection, QStringLiteral("BEGIN IMMEDIATE"));
    m_writer->write(rows);
    transaction.commit();
    // Afterwards, so that a file that goes in between is noticed as well.
    const QString lost = m_file.lossOfPath();
    if (!lost.isEmpty())
        throw SqlError(lost);
}

} // namespace station

#include "station/results/SqlConnection.h"

#include <QSqlError>

#include <atomic>
#include <mutex>

namespace station {

namespace {

std::atomic<quint64> connections{0};

/// Qt's list of connections has a lock of its own, of which a thread checker sees one half when two meet
/// there.
std::mutex listMutex;

QSqlDatabase listed(const QString &driver, const QString &name)
{
    const std::lock_guard lock(listMutex);
    return QSqlDatabase::addDatabase(driver, name);
}

void unlist(const QString &name)
{
    const std::lock_guard lock(listMutex);
    QSqlDatabase::removeDatabase(name);
}

/// A driver's words are of several lines at times; a log line or an error line is one.
QString inOneLine(const QSqlError &error)
{
    const QString text = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    return text.simplified();
}

/// By the standard's classes of conditions, which a server names in five characters: data, constraints, views
/// with a check, limits of a row, what a trigger raises; and of those about access the right that is missing.
SqlError::About aboutOf(const QSqlError &error)
{
    static const QStringList ofRow{QStringLiteral("22"), QStringLiteral("23"), QStringLiteral("44"),
                                   QStringLiteral("54"), QStringLiteral("P0")};
    const QString code = error.nativeErrorCode();
    const bool isOfRow = code.size() == 5 && (ofRow.contains(code.left(2)) || code == QLatin1String("42501"));
    return isOfRow ? SqlError::About::Row : SqlError::About::Database;
}

} // namespace

SqlError::SqlError(const QSqlError &error)
    : SqlError(inOneLine(error), aboutOf(error))
{}

SqlConnection::SqlConnection(const QString &driver)
    : m_name(QStringLiteral("station-%1").arg(++connections))
    , m_database(listed(driver, m_name))
{
    // The text is about a missing package and not about a database that could be had otherwise.
    if (!m_database.isValid()) {
        m_database = {};
        unlist(m_name);
        throw SqlError(QStringLiteral("Qt's driver %1 is not installed").arg(driver));
    }
}

SqlConnection::~SqlConnection()
{
    m_database.close();
    m_database = {};
    unlist(m_name);
}

void SqlConnection::open()
{
    if (!m_database.open())
        throw SqlError(m_database.lastError());
}

QSqlQuery SqlConnection::run(const QString &statement)
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.exec(statement))
        throw SqlError(query.lastError());
    query.next();
    return query;
}

QVariant SqlConnection::value(const QString &statement)
{
    const QSqlQuery query = run(statement);
    return query.isValid() ? query.value(0) : QVariant();
}

QSqlQuery SqlConnection::prepared(const QString &statement)
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.prepare(statement))
        throw SqlError(query.lastError());
    return query;
}

void SqlConnection::run(QSqlQuery &query)
{
    if (!query.exec())
        throw SqlError(query.lastError());
}

SqlTransaction::SqlTransaction(SqlConnection &connection, const QString &begin)
    : m_connection(connection)
{
    m_connection.run(begin);
}

SqlTransaction::~SqlTransaction()
{
    // What cannot be taken back any more has gone with its connection.
    if (!m_open || !m_connection.database().isOpen())
        return;
    QSqlQuery query(m_connection.database());
    static_cast<void>(query.exec(QStringLiteral("ROLLBACK")));
}

void SqlTransaction::commit()
{
    // By the driver, which notices where a server answers a commit by taking all back.
    if (!m_connection.database().commit())
        throw SqlError(m_connection.database().lastError());
    m_open = false;
}

} // namespace station

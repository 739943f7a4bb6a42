#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

#include <stdexcept>

namespace station {

/// What a database has refused, in its own words, on one line.
class SqlError : public std::runtime_error
{
public:
    /// Whether a row is refused for what it is (a value, a constraint, a right that is missing), and would be
    /// at every further try; or something is wrong with the database, which may pass.
    enum class About { Database, Row };

    explicit SqlError(const QString &text, About about = About::Database)
        : std::runtime_error(text.toStdString())
        , m_about(about)
    {}
    explicit SqlError(const QSqlError &error);
    [[nodiscard]] QString text() const { return QString::fromUtf8(what()); }
    /// Of a SQLite file's errors none is about a row.
    [[nodiscard]] About about() const { return m_about; }

private:
    About m_about;
};

/// A connection of Qt's SQL module with a name that no other one has; closed and forgotten with this object.
///
/// Thread: the one that made it, from the first line to the last. Errors: throws SqlError.
class SqlConnection
{
public:
    /// Requires for a use: the driver's Debian package (libqt6sql6-sqlite, libqt6sql6-psql).
    explicit SqlConnection(const QString &driver);
    /// What is left of its queries is not used any more.
    ~SqlConnection();
    SqlConnection(const SqlConnection &) = delete;
    SqlConnection &operator=(const SqlConnection &) = delete;

    [[nodiscard]] QSqlDatabase &database() { return m_database; }
    [[nodiscard]] QSqlDriver *driver() const { return m_database.driver(); }
    void open();
    /// Runs a statement of this house; one that gives rows stands at the first of them.
    QSqlQuery run(const QString &statement);
    /// The first value of the first row; nothing without a row.
    [[nodiscard]] QVariant value(const QString &statement);
    /// Prepares a statement, whose values are bound before each use.
    [[nodiscard]] QSqlQuery prepared(const QString &statement);
    /// Runs a prepared statement.
    static void run(QSqlQuery &query);

private:
    QString m_name;
    QSqlDatabase m_database;
};

/// What is done between its making and commit() is done whole or not at all.
class SqlTransaction
{
public:
    /// The statement says how it begins ("BEGIN").
    SqlTransaction(SqlConnection &connection, const QString &begin);
    ~SqlTransaction();
    SqlTransaction(const SqlTransaction &) = delete;
    SqlTransaction &operator=(const SqlTransaction &) = delete;
    /// Errors: throws SqlError; nothing was done then, or nobody knows, where a server went away meanwhile.
    void commit();

private:
    SqlConnection &m_connection;
    bool m_open = true;
};

} // namespace station

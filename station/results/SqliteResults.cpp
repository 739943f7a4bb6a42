#include "station/results/SqliteResults.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "station/base/StationError.h"
#include "station/results/Schema.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <utility>

namespace station {

namespace {

constexpr mode_t ReadableByAll = 0666;

const QStringList AllTables{QStringLiteral("runs"), QStringLiteral("sequences"), QStringLiteral("calls"),
                            QStringLiteral("answers"), QStringLiteral("refusals")};
/// What calls refer to.
const QStringList TablesOfRun{QStringLiteral("runs"), QStringLiteral("sequences")};
const QString LastRun = QStringLiteral("run = (SELECT run FROM main.runs ORDER BY rowid DESC LIMIT 1)");

/// The log that is left of a file that has gone is not the next one's. One that holds something is another
/// station's.
void removeEmptyLog(const QString &path)
{
    const QString log = path + QStringLiteral("-wal");
    if (QFileInfo(log).size() > 0)
        return;
    QFile::remove(log);
    QFile::remove(path + QStringLiteral("-shm"));
}

class Attached
{
public:
    explicit Attached(SqlConnection &connection)
        : m_connection(connection)
    {}
    ~Attached()
    {
        QSqlQuery query(m_connection.database());
        static_cast<void>(query.exec(QStringLiteral("DETACH next")));
    }
    Attached(const Attached &) = delete;
    Attached &operator=(const Attached &) = delete;

private:
    SqlConnection &m_connection;
};

} // namespace

SqliteResults::SqliteResults(const QString &path, std::chrono::milliseconds patience)
    : m_path(path)
    , m_patience(patience)
{
    // Not on the queue: who has the file already is told with its path.
    m_file = std::make_unique<LockedFile>(path, O_RDWR, ReadableByAll);
    QString why;
    queue().wait([this, &why] {
        try {
            open();
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
    settle();
    queue().wait([this] {
        m_writer.reset();
        m_connection.reset();
    });
}

void SqliteResults::open()
{
    m_connection = std::make_unique<SqliteConnection>(m_path, m_patience);
    schema::prepare(*m_connection, schema::Dialect::Sqlite);
    m_writer.emplace(*m_connection);
}

void SqliteResults::keep(const ResultRows &rows)
{
    SqlTransaction transaction(*m_connection, QStringLiteral("BEGIN IMMEDIATE"));
    m_writer->write(rows);
    transaction.commit();
}

/// Where the path leads to another file, or to none, goes on in the one that it leads to.
void SqliteResults::findPlace()
{
    const QString gone = m_file->lossOfPath();
    if (gone.isEmpty()) {
        if (!m_writer)
            open();
        return;
    }
    finishLog();
    removeEmptyLog(m_path);
    auto next = std::make_unique<LockedFile>(m_path, O_RDWR, ReadableByAll);
    {
        SqliteConnection made(m_path, m_patience);
        schema::prepare(made, schema::Dialect::Sqlite);
    }
    if (m_file->isUnlinked() && m_connection)
        copyTo(m_path, AllTables, QStringLiteral("1"));
    else if (m_connection)
        copyTo(m_path, TablesOfRun, LastRun);
    m_writer.reset();
    m_connection.reset();
    m_file = std::move(next);
    open();
    KVKLogEvent(KVKLogLevel::Default, "results go on in a new file: %@: %@", {m_path, gone});
}

/// What the log beside the file holds belongs into that file, wherever it is now.
void SqliteResults::finishLog()
{
    if (!m_connection)
        return;
    const bool isBusy = m_connection->value(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)")).toInt() != 0;
    // Rows that are copied are read with their log.
    if (isBusy && !m_file->isUnlinked())
        throw SqlError(QStringLiteral("the file has been moved while somebody reads it"));
}

/// Ours are as new as what the other file may have of the same runs, or newer.
void SqliteResults::copyTo(const QString &path, const QStringList &tables, const QString &which)
{
    QSqlQuery attach = m_connection->prepared(QStringLiteral("ATTACH ? AS next"));
    attach.bindValue(0, path);
    SqlConnection::run(attach);
    const Attached attached(*m_connection);
    SqlTransaction transaction(*m_connection, QStringLiteral("BEGIN"));
    for (const QString &table : tables) {
        m_connection->run(QStringLiteral("INSERT OR REPLACE INTO next.%1 SELECT * FROM main.%1 WHERE %2")
                              .arg(table, which));
    }
    transaction.commit();
}

} // namespace station

#include "station/results/Outbox.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QUuid>

#include <algorithm>

namespace station {

namespace {

/// "KVRO"; a file of results or of anything else is none.
constexpr int ApplicationId = 0x4b56524f;
constexpr int Version = 2;
constexpr qint64 ManyBytes = 4'000'000;

const QStringList Tables{
    QStringLiteral("CREATE TABLE identity (station_id TEXT NOT NULL)"),
    // Numbers go on though all letters are gone.
    QStringLiteral("CREATE TABLE letters (number INTEGER PRIMARY KEY AUTOINCREMENT, answers INTEGER NOT NULL,"
                   " rows TEXT NOT NULL)")};
const QString RefusedTable =
    QStringLiteral("CREATE TABLE refused (number INTEGER PRIMARY KEY, answers INTEGER NOT NULL,"
                   " rows TEXT NOT NULL, why TEXT NOT NULL, refused TEXT NOT NULL)");

ResultRows read(const QString &text)
{
    ResultRows rows;
    for (const QJsonValue &row : QJsonDocument::fromJson(text.toUtf8()).array()) {
        rows.append({row.toObject().value(QStringLiteral("kind")).toString(),
                     row.toObject().value(QStringLiteral("values")).toObject()});
    }
    return rows;
}

} // namespace

Outbox::Outbox(const QString &path, std::chrono::milliseconds patience)
    : m_connection(path, patience)
{
    makeTables();
}

void Outbox::makeTables()
{
    SqlTransaction transaction(m_connection, QStringLiteral("BEGIN IMMEDIATE"));
    const bool isNew = m_connection.value(QStringLiteral("SELECT count(*) FROM sqlite_master")).toInt() == 0;
    if (!isNew && m_connection.value(QStringLiteral("PRAGMA application_id")).toInt() != ApplicationId)
        throw SqlError(QStringLiteral("the file holds something else than an outbox"));
    const int version = m_connection.value(QStringLiteral("PRAGMA user_version")).toInt();
    if (version > Version)
        throw SqlError(QStringLiteral("the outbox is of version %1, and this station knows up to %2")
                           .arg(version)
                           .arg(Version));
    if (version == Version)
        return;
    if (isNew)
        makeFirstTables();
    m_connection.run(RefusedTable);
    m_connection.run(QStringLiteral("PRAGMA user_version = %1").arg(Version));
    transaction.commit();
}

void Outbox::makeFirstTables()
{
    for (const QString &table : Tables)
        m_connection.run(table);
    QSqlQuery identity = m_connection.prepared(QStringLiteral("INSERT INTO identity VALUES (?)"));
    identity.bindValue(0, QUuid::createUuid().toString(QUuid::WithoutBraces));
    SqlConnection::run(identity);
    m_connection.run(QStringLiteral("PRAGMA application_id = %1").arg(ApplicationId));
}

QString Outbox::stationId()
{
    return m_connection.value(QStringLiteral("SELECT station_id FROM identity")).toString();
}

void Outbox::add(const ResultRows &rows)
{
    QSqlQuery query =
        m_connection.prepared(QStringLiteral("INSERT INTO letters (answers, rows) VALUES (?, ?)"));
    query.bindValue(0, isAnswer(rows) ? 1 : 0);
    query.bindValue(1, textOf(rows));
    SqlConnection::run(query);
}

QList<Outbox::Letter> Outbox::oldest(int most)
{
    QSqlQuery query = m_connection.prepared(
        QStringLiteral("SELECT number, answers, rows FROM letters ORDER BY number LIMIT ?"));
    query.bindValue(0, most);
    SqlConnection::run(query);
    QList<Letter> letters;
    qint64 bytes = 0;
    while (bytes < ManyBytes && query.next()) {
        const QString text = query.value(2).toString();
        bytes += text.size();
        letters.append({query.value(0).toLongLong(), query.value(1).toInt() != 0, read(text)});
    }
    return letters;
}

void Outbox::removeUpTo(qint64 number)
{
    QSqlQuery query = m_connection.prepared(QStringLiteral("DELETE FROM letters WHERE number <= ?"));
    query.bindValue(0, number);
    SqlConnection::run(query);
}

void Outbox::refuse(qint64 number, const QString &why)
{
    SqlTransaction transaction(m_connection, QStringLiteral("BEGIN IMMEDIATE"));
    QSqlQuery copy = m_connection.prepared(QStringLiteral(
        "INSERT INTO refused SELECT number, answers, rows, ?, ? FROM letters WHERE number = ?"));
    copy.bindValue(0, why);
    copy.bindValue(1, QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs));
    copy.bindValue(2, number);
    SqlConnection::run(copy);
    QSqlQuery removal = m_connection.prepared(QStringLiteral("DELETE FROM letters WHERE number = ?"));
    removal.bindValue(0, number);
    SqlConnection::run(removal);
    transaction.commit();
}

qint64 Outbox::retryRefused()
{
    SqlTransaction transaction(m_connection, QStringLiteral("BEGIN IMMEDIATE"));
    const qint64 refused = m_connection.value(QStringLiteral("SELECT count(*) FROM refused")).toLongLong();
    m_connection.run(QStringLiteral(
        "INSERT INTO letters (number, answers, rows) SELECT number, answers, rows FROM refused"));
    m_connection.run(QStringLiteral("DELETE FROM refused"));
    transaction.commit();
    return refused;
}

Outbox::Count Outbox::count()
{
    const QSqlQuery query =
        m_connection.run(QStringLiteral("SELECT count(*), coalesce(sum(answers), 0) FROM letters"));
    return {query.value(0).toLongLong(), query.value(1).toLongLong()};
}

bool isAnswer(const ResultRows &rows)
{
    return std::any_of(rows.cbegin(), rows.cend(),
                       [](const ResultRow &row) { return row.kind == QLatin1String("call"); });
}

QString usualOutbox(const QString &configuration)
{
    const QString given = qEnvironmentVariable("XDG_STATE_HOME");
    const QString state =
        QDir::isAbsolutePath(given) ? given : QDir::homePath() + QStringLiteral("/.local/state");
    const QByteArray path = QFileInfo(configuration).canonicalFilePath().toUtf8();
    const QByteArray digest = QCryptographicHash::hash(path, QCryptographicHash::Sha256).toHex().left(16);
    return QStringLiteral("%1/interactive-station/outbox-%2.sqlite").arg(state, QString::fromLatin1(digest));
}

} // namespace station

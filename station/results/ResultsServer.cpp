#include "station/results/ResultsServer.h"

#include "station/results/Schema.h"

#include <QSqlDriver>

#include <libpq-fe.h>

Q_DECLARE_OPAQUE_POINTER(PGconn *)

namespace station {

namespace {

/// Looked at by the type's name, as Qt's documents have it: the type is libpq's.
PGconn *handleOf(const SqlConnection &connection)
{
    const QVariant handle = connection.driver()->handle();
    if (handle.metaType() != QMetaType::fromType<PGconn *>())
        return nullptr;
    return *static_cast<PGconn *const *>(handle.constData());
}

/// A server that goes says so to its clients; that comes back as an error as well.
void takeNoNotice(void *, const char *) {}

} // namespace

ResultsServer::ResultsServer(const ServerAddress &address)
    : m_connection(QStringLiteral("QPSQL"))
{
    m_connection.database().setConnectOptions(address.connectOptions());
    m_connection.open();
    if (PGconn *handle = handleOf(m_connection))
        PQsetNoticeProcessor(handle, takeNoNotice, nullptr);
    schema::prepare(m_connection, schema::Dialect::PostgreSql);
    m_writer.emplace(m_connection);
}

void ResultsServer::store(const QList<Outbox::Letter> &letters)
{
    SqlTransaction transaction(m_connection, QStringLiteral("BEGIN"));
    for (const Outbox::Letter &letter : letters)
        m_writer->write(letter.rows);
    transaction.commit();
}

int ResultsServer::socket() const
{
    PGconn *handle = handleOf(m_connection);
    return handle ? PQsocket(handle) : -1;
}

} // namespace station

#include "station/results/PostgresResults.h"

#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "station/base/StationError.h"

#include <QDir>
#include <QFileInfo>
#include <QTextStream>

#include <fcntl.h>

namespace station {

namespace {

constexpr mode_t ReadableByOwner = 0600;

/// The folder for state is there on no new machine.
QString withFolder(const QString &path)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    return path;
}

} // namespace

PostgresResults::PostgresResults(const ServerAddress &address, const QString &outbox,
                                 const Forwarder::Patience &patience)
    : m_server(address.name())
    , m_file(withFolder(outbox), O_RDWR, ReadableByOwner)
{
    QString why;
    queue().wait([this, &why] {
        try {
            m_outbox.emplace(m_file.path());
            m_stationId = m_outbox->stationId();
            static_cast<void>(m_outbox->retryRefused());
            const Outbox::Count left = m_outbox->count();
            m_state.found(left.letters, left.answers);
        } catch (...) {
            m_outbox.reset();
            why = KVKTextOfException(std::current_exception());
        }
    });
    if (!why.isEmpty())
        throw StationError(QStringLiteral("%1: %2").arg(outbox, why));
    m_forwarder.emplace(m_file.path(), address, m_state, patience);
}

PostgresResults::~PostgresResults()
{
    settle();
    m_forwarder.reset();
    queue().wait([this] { m_outbox.reset(); });
    const QString waiting = m_state.waiting();
    if (!waiting.isEmpty())
        QTextStream(stdout) << waiting << ' ' << m_server << " and will be sent at the next start"
                            << Qt::endl;
    const QString refused = m_state.refusals();
    if (!refused.isEmpty())
        QTextStream(stdout) << refused << ' ' << m_server << ", are kept in " << m_file.path()
                            << " and will be tried again at the next start" << Qt::endl;
}

void PostgresResults::keep(const ResultRows &rows)
{
    m_outbox->add(rows);
    // It is sent as long as this station lives, and cannot be found by the next one.
    const QString lost = m_file.lossOfPath();
    if (!lost.isEmpty())
        lose(name(), lost);
    m_state.added(isAnswer(rows));
    m_forwarder->wake();
}

} // namespace station

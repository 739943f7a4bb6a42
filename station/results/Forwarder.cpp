#include "station/results/Forwarder.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "station/results/ResultsServer.h"

#include <algorithm>
#include <sys/socket.h>
#include <utility>

namespace station {

namespace {

constexpr int LettersAtOnce = 200;

} // namespace

Forwarder::Forwarder(QString outbox, ServerAddress address, OutboxState &state, const Patience &patience)
    : m_outbox(std::move(outbox))
    , m_address(std::move(address))
    , m_state(state)
    , m_patience(patience)
    , m_thread([this] { work(); })
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_hasOpened; });
}

Forwarder::~Forwarder()
{
    {
        std::unique_lock lock(m_mutex);
        m_limit = std::chrono::steady_clock::now() + m_patience.end;
        m_changed.notify_all();
        m_changed.wait_until(lock, *m_limit, [this] { return m_ended; });
        // A server that has stopped in the midst answers nothing, and would be waited for.
        if (!m_ended && m_socket >= 0)
            ::shutdown(m_socket, SHUT_RDWR);
    }
    m_thread.join();
}

void Forwarder::wake()
{
    const std::lock_guard lock(m_mutex);
    m_hasMore = true;
    m_changed.notify_all();
}

void Forwarder::work()
{
    std::optional<Outbox> outbox;
    for (Turn turn = Turn::GoOn; turn == Turn::GoOn;) {
        try {
            if (!outbox)
                outbox.emplace(m_outbox);
            tellOpened();
            sendAll(*outbox);
            turn = waitForMore();
        } catch (...) {
            tellOpened();
            disconnect();
            const QString why = KVKTextOfException(std::current_exception());
            if (m_state.failed(why))
                KVKLogEvent(KVKLogLevel::Default, "results wait for %@: %@", {m_address.name(), why});
            turn = waitForNextTry();
        }
    }
    disconnect();
    const std::lock_guard lock(m_mutex);
    m_ended = true;
    m_changed.notify_all();
}

/// Who has made the forwarder waits for it: a file that is removed behind that is still sent from, while one
/// that is removed before it is opened would be made anew, without what was written meanwhile.
void Forwarder::tellOpened()
{
    const std::lock_guard lock(m_mutex);
    m_hasOpened = true;
    m_changed.notify_all();
}

void Forwarder::sendAll(Outbox &outbox)
{
    if (!m_server)
        connect();
    for (;;) {
        const QList<Outbox::Letter> letters = outbox.oldest(LettersAtOnce);
        if (letters.isEmpty() || isOver())
            break;
        if (takes(letters)) {
            outbox.removeUpTo(letters.constLast().number);
            const auto answers = std::count_if(letters.cbegin(), letters.cend(),
                                               [](const Outbox::Letter &letter) { return letter.isAnswer; });
            m_state.sent(letters.size(), answers);
        } else {
            sendOneByOne(outbox, letters);
        }
        m_patience.untilNextTry.reset();
    }
    if (!isOver() && m_state.caughtUp())
        KVKLogEvent(KVKLogLevel::Default, "%@ has all results", {m_address.name()});
}

bool Forwarder::takes(const QList<Outbox::Letter> &letters, QString *why)
{
    try {
        m_server->store(letters);
        return true;
    } catch (const SqlError &error) {
        if (error.about() != SqlError::About::Row)
            throw;
        if (why)
            *why = error.text();
        return false;
    }
}

/// One of them is refused, and nobody knows which.
void Forwarder::sendOneByOne(Outbox &outbox, const QList<Outbox::Letter> &letters)
{
    for (const Outbox::Letter &letter : letters) {
        if (isOver())
            return;
        QString why;
        if (takes({letter}, &why)) {
            outbox.removeUpTo(letter.number);
            m_state.sent(1, letter.isAnswer ? 1 : 0);
        } else {
            setApart(outbox, letter, why);
        }
    }
}

void Forwarder::setApart(Outbox &outbox, const Outbox::Letter &letter, const QString &why)
{
    outbox.refuse(letter.number, why);
    m_state.refused(letter.isAnswer, why);
    // A right that is missing refuses every row, in the same words.
    if (std::exchange(m_lastRefusal, why) != why)
        KVKLogEvent(KVKLogLevel::Error, "%@ refuses a result, which is set apart in %@: %@",
                    {m_address.name(), m_outbox, why});
}

void Forwarder::connect()
{
    m_server = std::make_unique<ResultsServer>(m_address);
    const std::lock_guard lock(m_mutex);
    m_socket = m_server->socket();
}

void Forwarder::disconnect()
{
    {
        const std::lock_guard lock(m_mutex);
        m_socket = -1;
    }
    m_server.reset();
}

bool Forwarder::isOver()
{
    const std::lock_guard lock(m_mutex);
    return m_limit && std::chrono::steady_clock::now() >= *m_limit;
}

Forwarder::Turn Forwarder::waitForMore()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_limit || m_hasMore; });
    // At the end, too, what came last goes first.
    return std::exchange(m_hasMore, false) ? Turn::GoOn : Turn::End;
}

Forwarder::Turn Forwarder::waitForNextTry()
{
    const auto next = std::chrono::steady_clock::now() + m_patience.untilNextTry.next();
    std::unique_lock lock(m_mutex);
    m_changed.wait_until(lock, next, [this] { return m_limit.has_value(); });
    m_hasMore = true;
    return m_limit ? Turn::End : Turn::GoOn;
}

} // namespace station

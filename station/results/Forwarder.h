#pragma once

#include "station/results/Backoff.h"
#include "station/results/Outbox.h"
#include "station/results/OutboxState.h"
#include "station/results/ServerAddress.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace station {

class ResultsServer;

/// Sends what lies in an outbox to the results server, in its order, on a thread of its own. A letter leaves
/// the outbox when the server has committed it; one that is sent twice, since nobody knows whether it
/// arrived, is there once. What fails is tried again, for as long as it takes; a letter that the server
/// refuses for what it is holds nobody up: it is set apart in the outbox, and said so, and the others go on.
///
/// Thread: any. Ownership: refers to the state.
class Forwarder
{
public:
    struct Patience
    {
        Backoff untilNextTry{std::chrono::seconds(1), std::chrono::minutes(1)};
        /// How long the end may take while the server takes letters.
        std::chrono::milliseconds end{3000};
    };

    /// Returns when the outbox has been opened, or could not be: what is removed behind that is still sent.
    Forwarder(QString outbox, ServerAddress address, OutboxState &state, const Patience &patience);
    /// Sends what it can in the time that it has; the rest stays in the outbox.
    ~Forwarder();
    Forwarder(const Forwarder &) = delete;
    Forwarder &operator=(const Forwarder &) = delete;

    /// There is something in the outbox.
    void wake();

private:
    enum class Turn { GoOn, End };

    void work();
    void tellOpened();
    void sendAll(Outbox &outbox);
    /// Whether the server has taken them; it takes all or none.
    [[nodiscard]] bool takes(const QList<Outbox::Letter> &letters, QString *why = nullptr);
    void sendOneByOne(Outbox &outbox, const QList<Outbox::Letter> &letters);
    void setApart(Outbox &outbox, const Outbox::Letter &letter, const QString &why);
    void connect();
    void disconnect();
    [[nodiscard]] bool isOver();
    /// Requires: all is sent. Returns when there is more, or at the end.
    Turn waitForMore();
    /// Returns when it may be tried again, or at the end.
    Turn waitForNextTry();

    const QString m_outbox;
    const ServerAddress m_address;
    OutboxState &m_state;
    Patience m_patience;                     ///< Its back-off is the thread's.
    std::unique_ptr<ResultsServer> m_server; ///< The thread's.
    QString m_lastRefusal;                   ///< What was logged of it. The thread's.

    std::mutex m_mutex; ///< Guards what follows.
    std::condition_variable m_changed;
    bool m_hasMore =
        true; ///< At the beginning it is asked for at once: what is wrong with a server is told then.
    std::optional<std::chrono::steady_clock::time_point> m_limit; ///< Set at the end.
    bool m_hasOpened = false;                                     ///< Whether it was tried.
    bool m_ended = false;
    int m_socket = -1; ///< Of the session; taken away before that ends.
    std::thread m_thread;
};

} // namespace station

#pragma once

#include <QString>

#include <functional>
#include <mutex>

namespace station {

/// What people are told of an outbox: how much waits, as long as the server does not keep up.
///
/// Thread: any.
class OutboxState
{
public:
    /// The sentence, empty while nothing has to be told; and what is wrong with the server, empty while it
    /// works.
    using Listener = std::function<void(const QString &text, const QString &trouble)>;

    /// So much lies there from an earlier time.
    void found(qint64 letters, qint64 answers);
    void added(bool isAnswer);
    void sent(qint64 letters, qint64 answers);
    /// The server could not be reached, or has refused. Returns whether that is new.
    bool failed(const QString &why);
    /// Nothing waits any more. Returns whether there was trouble before.
    bool caughtUp();

    /// Calls the function now, and whenever the sentence changes, on whichever thread changes it. It must
    /// return at once, and not call back.
    void setListener(Listener listener);
    /// "12 answers wait for the results server"; empty when nothing waits.
    [[nodiscard]] QString waiting() const;

private:
    [[nodiscard]] QString text() const;
    void tell();

    mutable std::mutex m_mutex;
    qint64 m_letters = 0;
    qint64 m_answers = 0;
    QString m_trouble;
    bool m_isBehind = false;
    QString m_told;
    QString m_toldTrouble;
    Listener m_listener;
};

} // namespace station

#pragma once

#include <QString>

#include <functional>
#include <mutex>

namespace station {

/// What people are told of an outbox: how much waits, as long as the server does not keep up, and how much of
/// it the server has refused for what it is.
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
    /// The server has refused one for what it is, which waits no longer.
    void refused(bool isAnswer, const QString &why);
    /// The server could not be reached, or has refused. Returns whether that is new.
    bool failed(const QString &why);
    /// Nothing waits any more. Returns whether there was trouble before.
    bool caughtUp();

    /// Calls the function now, and whenever the sentence changes, on whichever thread changes it. It must
    /// return at once, and not call back.
    void setListener(Listener listener);
    /// "12 answers wait for the results server"; empty when nothing waits.
    [[nodiscard]] QString waiting() const;
    /// "3 answers were refused by the results server"; empty when nothing was.
    [[nodiscard]] QString refusals() const;

private:
    [[nodiscard]] QString text() const;
    [[nodiscard]] QString trouble() const;
    void tell();

    mutable std::mutex m_mutex;
    qint64 m_letters = 0;
    qint64 m_answers = 0;
    qint64 m_refused = 0; ///< Letters.
    qint64 m_refusedAnswers = 0;
    QString m_refusal; ///< The server's words for the last of them.
    QString m_trouble;
    bool m_isBehind = false;
    QString m_told;
    QString m_toldTrouble;
    Listener m_listener;
};

} // namespace station

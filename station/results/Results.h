#pragma once

#include "station/results/OutboxState.h"
#include "station/results/ResultsSink.h"

#include <QHash>

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace station {

/// Where results are to go. Each of them may be empty.
struct ResultsTargets
{
    QString file = {}; ///< The command line's: a database where it ends with ".sqlite", otherwise JSON lines.
    QString database = {}; ///< The configuration's: the absolute path of such a file, or a server's address.
    QString outbox = {};   ///< Where results for a server wait; needed with one.
};

/// What a station's sequences have to show for themselves: written wherever that is wanted, and printed for
/// people where that is wanted.
///
/// Thread: any; calls and ends are said on their sequence's thread, all else on the main thread, which does
/// not wait for a database.
class Results
{
public:
    /// Errors: throws StationError when a place cannot be written to, or another station writes there.
    Results(const ResultsTargets &targets, bool printsAnswers);
    ~Results();

    /// A run starts: what follows bears a new identification.
    void beginRun(const QString &station, const QString &configuration, const QString &operatorBadge = {});
    void beginSequence(const ResultOwner &owner);
    /// Returns when the call is safe.
    void writeCall(const ResultOwner &owner, const KVKLuaCall &call, const CallStart &start = {});
    /// Returns when the end is safe.
    void writeEnd(const ResultOwner &owner, const KVKLuaEnd &end);
    /// An operator's entry was refused, while a call goes on.
    void writeRefusal(const RefusedEntry &entry);
    /// Looks after the files, and tries once more to write what could not be written, see ResultsSink. To be
    /// called from time to time.
    void tryAgain();
    /// Whether anything was lost, which was reported on the standard error output. Waits until all is
    /// written, or lost.
    [[nodiscard]] bool hasFailed();
    /// Tells, on any thread, in words how much waits to be written and how much for a results server (see
    /// OutboxState), and why. It is told at once, and when that changes.
    void onWaiting(OutboxState::Listener listener);

private:
    void addServer(const ResultsTargets &targets);
    void addFile(const QString &path, const QString &key);
    void tellWaiting();
    template <class Event>
    void write(const Event &event);
    void print(const QString &line);

    std::mutex m_waitingMutex;        ///< Guards what follows.
    OutboxState::Listener m_listener; ///< Told under the lock, so that the last word is the newest.
    QString m_outboxText;
    QString m_outboxTrouble;

    std::vector<std::unique_ptr<ResultsSink>> m_sinks; ///< They use what stands above until they go.
    OutboxState *m_waiting = nullptr;                  ///< The server's, which is among the sinks.
    bool m_prints;
    std::mutex m_printing; ///< So that lines of two sequences are not mixed.

    std::mutex m_mutex; ///< Guards what follows.
    QString m_run;      ///< Empty before the first run.
    QString m_operator;
    QHash<int, int> m_calls; ///< How many each sequence of the run has made.
    int m_refusals = 0;
};

} // namespace station

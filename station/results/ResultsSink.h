#pragma once

#include "station/results/ResultEvents.h"

#include <atomic>
#include <functional>
#include <mutex>

namespace station {

/// One place that results go to.
///
/// What cannot be written (a full disk, a folder that has gone) is kept in its order, is said at once on the
/// standard error output and in the log, "results cannot be written: NAME: why", stands in the log itself,
/// and is written as soon as that is possible.
///
/// Thread: any, several at once. What a sequence says (a call, an end) is safe when the function returns, or
/// kept; what the main thread says (a run, a sequence that begins, a refused entry) may be written later, in
/// its order. Errors: none is thrown; what is kept until the end is told as "results are lost: NAME: why",
/// and hasFailed() remembers it.
class ResultsSink
{
public:
    /// What is kept: how many events, and why, "NAME: why".
    struct Unwritten
    {
        qsizetype count = 0;
        QString why = {};
    };

    ResultsSink() = default;
    virtual ~ResultsSink() = default;
    ResultsSink(const ResultsSink &) = delete;
    ResultsSink &operator=(const ResultsSink &) = delete;

    virtual void write(const RunBegun &run) = 0;
    virtual void write(const SequenceBegun &sequence) = 0;
    virtual void write(const CallDone &call) = 0;
    virtual void write(const SequenceDone &sequence) = 0;
    virtual void write(const EntryRefused &refusal) = 0;

    /// Looks after the place, and tries once more to write what is kept. Does not wait for a database.
    virtual void tryAgain() = 0;
    /// Returns when all that was handed over has been written, or cannot be, and is told as lost.
    virtual void settle() = 0;
    /// Whether anything was lost so far. Requires: settle(), for the last word.
    [[nodiscard]] bool hasFailed() const { return m_failed; }
    [[nodiscard]] Unwritten unwritten() const;
    /// Told, on any thread, when unwritten() has changed. Requires: set before anything is written.
    void onUnwritten(std::function<void()> listener) { m_listener = std::move(listener); }

protected:
    /// Tells how many events are kept and why; none, when all is written. Said once until that changes.
    void tellUnwritten(const QString &name, qsizetype count, const QString &why = {});
    /// Puts what is kept into the log, where it can be found when the station is ended hard.
    static void noteKept(const QString &name, const QString &event);
    /// Tells that something is lost. Told once: each one after the first would say the same.
    void lose(const QString &name, const QString &why);

private:
    std::atomic<bool> m_failed{false};
    std::function<void()> m_listener;
    mutable std::mutex m_unwrittenMutex;
    Unwritten m_unwritten; ///< Guarded by the mutex.
};

} // namespace station

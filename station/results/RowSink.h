#pragma once

#include "station/results/ResultRows.h"
#include "station/results/ResultsSink.h"
#include "station/results/WriteQueue.h"

#include <chrono>
#include <deque>

namespace station {

/// Results as rows of a database, written by a thread of their own. Whoever says what a sequence has done
/// waits until it is safe, or kept; the main thread never waits.
///
/// Rows that cannot be written are kept and written in their order. While there are some, a call does not try
/// more often than once a second: each try may wait for another program that has the database locked.
///
/// Requires: the destructor of a class that keeps rows waits for its queue, which uses the class until then.
class RowSink : public ResultsSink
{
public:
    void write(const RunBegun &run) override;
    void write(const SequenceBegun &sequence) override;
    void write(const CallDone &call) override;
    void write(const SequenceDone &sequence) override;
    void write(const EntryRefused &refusal) override;
    void tryAgain() override;
    void settle() override;

protected:
    RowSink() = default;

    /// Keeps rows that belong together. Thread: the queue's. Errors: throws what it likes; the same rows come
    /// once more then, whether some of them are there or not.
    virtual void keep(const ResultRows &rows) = 0;
    /// Sees to it that what is written can be found. Thread: the queue's. Errors: throws what it likes.
    virtual void findPlace() {}
    /// For people: the file.
    [[nodiscard]] virtual QString name() const = 0;
    /// What runs bear of the station's identity.
    [[nodiscard]] virtual QString stationId() const { return {}; }

    /// The thread of the connections. A class that has connections ends them there.
    [[nodiscard]] WriteQueue &queue() { return m_queue; }

private:
    void keepOrOwe(const ResultRows &rows);
    void keepOwed();

    // The queue's thread alone uses these.
    std::deque<ResultRows> m_owed; ///< What could not be written yet.
    QString m_why;                 ///< Why not.
    std::chrono::steady_clock::time_point m_nextTry;
    std::atomic<bool> m_isTrying{false}; ///< Whether a job of tryAgain() waits.
    WriteQueue m_queue;
};

} // namespace station

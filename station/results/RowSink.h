#pragma once

#include "station/results/ResultRows.h"
#include "station/results/ResultsSink.h"
#include "station/results/WriteQueue.h"

namespace station {

/// Results as rows of a database, written by a thread of their own. Whoever says what a sequence has done
/// waits until it is safe; the main thread never waits.
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
    void settle() override;

protected:
    RowSink() = default;

    /// Keeps rows that belong together. Thread: the queue's. Errors: throws what it likes; nothing is kept
    /// then.
    virtual void keep(const ResultRows &rows) = 0;
    /// For people: the file.
    [[nodiscard]] virtual QString name() const = 0;
    /// What runs bear of the station's identity.
    [[nodiscard]] virtual QString stationId() const { return {}; }

    /// The thread of the connections. A class that has connections ends them there.
    [[nodiscard]] WriteQueue &queue() { return m_queue; }

private:
    void keepOrLose(const ResultRows &rows);

    ResultRows m_owed; ///< Runs and sequences that could not be written, which others refer to. The queue's.
    WriteQueue m_queue;
};

} // namespace station

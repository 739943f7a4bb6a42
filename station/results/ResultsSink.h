#pragma once

#include "station/results/ResultEvents.h"

#include <atomic>

namespace station {

/// One place that results go to.
///
/// Thread: any, several at once. What a sequence says (a call, an end) is safe when the function returns;
/// what the main thread says (a run, a sequence that begins, a refused entry) may be written later, in its
/// order. Errors: none is thrown; what cannot be written is told once on the standard error output, as
/// "results are lost: NAME: why", and hasFailed() remembers it.
class ResultsSink
{
public:
    ResultsSink() = default;
    virtual ~ResultsSink() = default;
    ResultsSink(const ResultsSink &) = delete;
    ResultsSink &operator=(const ResultsSink &) = delete;

    virtual void write(const RunBegun &run) = 0;
    virtual void write(const SequenceBegun &sequence) = 0;
    virtual void write(const CallDone &call) = 0;
    virtual void write(const SequenceDone &sequence) = 0;
    virtual void write(const EntryRefused &refusal) = 0;

    /// Returns when all that was handed over has been written, or is lost.
    virtual void settle() {}
    /// Whether anything was lost so far. Requires: settle(), for the last word.
    [[nodiscard]] bool hasFailed() const { return m_failed; }

protected:
    /// Tells that something is lost. Told once: each one after the first would say the same.
    void lose(const QString &name, const QString &why);

private:
    std::atomic<bool> m_failed{false};
};

} // namespace station

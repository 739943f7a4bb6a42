#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"
#include "station/ResultsFile.h"
#include "station/StationConfig.h"

#include <atomic>
#include <functional>
#include <optional>

namespace station {

/// One sequence of a run, for a system, a group or the station.
///
/// Thread: made and destroyed on the main thread; writes results on the sequence's own.
class RunningSequence : private KVKLuaSequenceObserver
{
public:
    /// Called on the main thread when the sequence has ended, not after the RunningSequence is gone.
    using Ended = std::function<void(const RunningSequence &sequence)>;

    struct Plan
    {
        QString script;
        ResultOwner owner;
        QList<int> systems; ///< Those whose row in the status table the sequence speaks for.
        platform::Dictionary globals;
    };

    RunningSequence(const Plan &plan, const std::vector<KVKBoundFunction> &functions, ResultsFile &results,
                    Ended ended);
    /// Requires: the sequence was not started, or has ended.
    ~RunningSequence() override;

    void start() { m_sequence.start(); }
    void requestStop() { m_sequence.requestStop(); }

    [[nodiscard]] QString name() const { return m_plan.owner.name(); }
    [[nodiscard]] const QList<int> &systems() const { return m_plan.systems; }
    /// How it ended; nothing while it runs. Main thread.
    [[nodiscard]] const std::optional<KVKLuaEnd> &end() const { return m_end; }
    /// Whether the sequence is inside a call of a plug-in. Thread: any.
    [[nodiscard]] bool isInCall() const { return m_inCall; }

private:
    void sequenceCalls(const QString &name) override;
    void sequenceCalled(const KVKLuaCall &call) override;
    void sequenceEnded(const KVKLuaEnd &end) override;

    Plan m_plan;
    ResultsFile &m_results;
    Ended m_ended;
    std::atomic<bool> m_inCall{false};
    std::optional<KVKLuaEnd> m_end;
    std::shared_ptr<bool> m_alive; ///< Expires with this, for jobs that arrive too late.
    KVKLuaSequence m_sequence;
};

/// The sequences that a configuration asks for: one per system, per group or one for the station, for each
/// script.
[[nodiscard]] QList<RunningSequence::Plan> planSequences(const StationConfig &config);

} // namespace station

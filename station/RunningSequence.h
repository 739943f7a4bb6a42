#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaRun.h"
#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"
#include "kovan/KovanUIExtension/KVKExtensionAnswerRelay.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "station/StationConfig.h"
#include "station/results/Results.h"

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
    /// Told on the main thread what happens to a sequence; not after the RunningSequence is gone.
    struct Listener
    {
        /// What its call waits for from now on; an empty `what` when it waits no longer.
        std::function<void(const KVKCallWait &wait)> waits;
        std::function<void(const KVKLuaEnd &end)> ended;
        /// A call that shows something to the operator has ended.
        std::function<void(const KVKLuaCall &call)> answered;
    };

    struct Plan
    {
        QString script;
        ResultOwner owner;
        QList<int> systems; ///< Those whose row in the status table the sequence speaks for.
        platform::Dictionary globals;
        QString
            group; ///< The one that the system is in or that the sequence is for; empty for the station's.
        KVKLuaLimits limits = {};
    };

    /// The sequence's place in its run.
    struct Place
    {
        std::shared_ptr<KVKLuaRun> run;
        std::size_t partner;
    };

    RunningSequence(const Plan &plan, const std::vector<KVKBoundFunction> &functions, Place place,
                    Results &results, Listener listener);
    /// Requires: the sequence was not started, or has ended.
    ~RunningSequence() override;

    void start();
    void requestStop() { m_sequence.requestStop(); }

    [[nodiscard]] QString name() const { return m_plan.owner.name(); }
    /// The script's file name.
    [[nodiscard]] QString script() const { return m_plan.owner.sequence; }
    [[nodiscard]] const QList<int> &systems() const { return m_plan.systems; }
    /// How it ended; nothing while it runs. Main thread.
    [[nodiscard]] const std::optional<KVKLuaEnd> &end() const { return m_end; }
    /// The number of the plug-in's call that the sequence is inside of, which no other call of the process
    /// has; 0 outside. Thread: any.
    [[nodiscard]] quint64 callNumber() const { return m_call; }
    /// Whether it waits for other sequences of its run, for as long as they take. Thread: any.
    [[nodiscard]] bool waitsForOthers() const { return m_waitsForOthers; }

    /// Tells the sequence whose call runs on the calling thread what it waits for; elsewhere nothing happens.
    static void callWaits(const KVKCallWait &wait);
    /// Keeps the answer that the call on the calling thread will return; elsewhere nothing happens.
    static void callAnswers(const KVKGivenAnswer &answer);
    /// The folder of the sequence whose call runs on the calling thread; empty elsewhere.
    [[nodiscard]] static QString folderOfCall();
    /// The systems of the sequence whose thread this is; none elsewhere.
    [[nodiscard]] static QList<int> systemsOfThread();

private:
    void sequenceBegins() override;
    void sequenceCalls(const QString &name) override;
    void sequenceCalled(const KVKLuaCall &call) override;
    void sequenceWaits(const KVKLuaWait &wait) override;
    void sequenceEnded(const KVKLuaEnd &end) override;
    void keepAnswer(const KVKGivenAnswer &answer);
    void tellWait(const KVKCallWait &wait);
    void tellAnswer(const KVKLuaCall &call);

    Plan m_plan;
    Results &m_results;
    Listener m_listener;
    std::atomic<quint64> m_call{0};
    std::atomic<bool> m_waitsForOthers{false};
    bool m_waits = false;                 ///< Whether the listener knows of a wait. The sequence's thread.
    std::optional<CallStart> m_callStart; ///< Of the call that it is inside of. The sequence's thread.
    QString m_callName;                   ///< Its name. The sequence's thread.
    bool m_isKept = false; ///< Whether what it will return is in the results. The sequence's thread.
    std::optional<KVKLuaEnd> m_end;
    std::shared_ptr<bool> m_alive; ///< Expires with this, for jobs that arrive too late.
    KVKLuaSequence m_sequence;
};

/// The sequences that a configuration asks for: one per system, per group or one for the station, for each
/// script.
[[nodiscard]] QList<RunningSequence::Plan> planSequences(const StationConfig &config);

/// What these sequences are for each other. Where several run for one owner, their names tell the scripts
/// too.
[[nodiscard]] std::vector<KVKLuaPartner> partnersOf(const QList<RunningSequence::Plan> &plans);

} // namespace station

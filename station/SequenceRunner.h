#pragma once

#include "station/RunningSequence.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

class KVKExtensionInterruption;

namespace station {

/// Runs the sequences of a station, all at once, and tells how they end.
///
/// Thread: the main thread, which it never blocks while sequences run. Ownership: refers to the results
/// and the interruptions.
class SequenceRunner : public QObject
{
    Q_OBJECT
public:
    SequenceRunner(const StationConfig &config, std::vector<KVKBoundFunction> functions,
                   platform::Dictionary constants, QList<KVKExtensionInterruption *> interruptions,
                   Results &results);
    /// Stops what runs, and serves the main queue until it has ended.
    ~SequenceRunner() override;

    /// Starts a run, whose sequences find the operator's badge in the global `operatorBadge` unless it is
    /// empty. Nothing happens when one is under way.
    void start(const QString &operatorBadge = {});
    /// Ends the run: the scripts at their next instruction, waiting calls through the plug-ins.
    void stop();
    [[nodiscard]] bool isRunning() const { return m_running > 0; }
    /// Whether every sequence of the last run passed; true before the first run, false after one that had
    /// nobody to run for.
    [[nodiscard]] bool allPassed() const { return m_allPassed; }
    /// Whether a sequence of the last run was stopped. One that has come to its end all the same was not.
    [[nodiscard]] bool wasStopped() const { return m_wasStopped; }
    /// Whether the last run had no sequence, since those of the configuration had no system or group to run
    /// for.
    [[nodiscard]] bool ranNothing() const { return m_ranNothing; }
    /// The systems that each sequence of the last run speaks for.
    [[nodiscard]] QList<QList<int>> systemsOfSequences() const;
    /// The file name of each one's script.
    [[nodiscard]] QStringList scriptsOfSequences() const;
    /// The calls of plug-ins that the sequences that still run are inside of, by number; none when one of
    /// them is outside. One that waits for other sequences, for as long as they take, is left out. The same
    /// answer twice means that each is still in the same call.
    [[nodiscard]] QList<quint64> callsUnderWay() const;
    /// The names of those that still run.
    [[nodiscard]] QStringList runningNames() const;

signals:
    void started();
    /// What a sequence's call waits for from now on (see KVKCallWait); the number counts from 0 in each run.
    void sequenceWaits(int sequence, const KVKCallWait &wait);
    /// What the operator has answered to a call of a sequence, or why there is no answer.
    void sequenceAnswered(int sequence, const KVKLuaCall &call);
    /// Sent for each sequence, and not once more for the same run.
    void sequenceEnded(int sequence, const KVKLuaEnd &end);
    /// Sent when the last one has ended.
    void allEnded();

private:
    [[nodiscard]] RunningSequence::Listener listenerOf(int sequence);
    void ended(int sequence, const KVKLuaEnd &end);

    StationConfig m_config;
    std::vector<KVKBoundFunction> m_functions;
    platform::Dictionary m_constants;
    QList<KVKExtensionInterruption *> m_interruptions;
    Results &m_results;
    std::vector<std::unique_ptr<RunningSequence>> m_sequences;
    int m_running = 0;
    bool m_allPassed = true;
    bool m_wasStopped = false;
    bool m_ranNothing = false;
};

} // namespace station

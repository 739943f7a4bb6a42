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
/// Thread: the main thread, which it never blocks while sequences run. Ownership: refers to the results file
/// and the interruptions.
class SequenceRunner : public QObject
{
    Q_OBJECT
public:
    SequenceRunner(const StationConfig &config, std::vector<KVKBoundFunction> functions,
                   platform::Dictionary constants, QList<KVKExtensionInterruption *> interruptions,
                   ResultsFile &results);
    /// Stops what runs, and serves the main queue until it has ended.
    ~SequenceRunner() override;

    /// Starts a run. Nothing happens when one is under way.
    void start();
    /// Ends the run: the scripts at their next instruction, waiting calls through the plug-ins.
    void stop();
    [[nodiscard]] bool isRunning() const { return m_running > 0; }
    /// Whether every sequence of the last run passed; true before the first run.
    [[nodiscard]] bool allPassed() const { return m_allPassed; }
    /// Whether each sequence that still runs is inside a call of a plug-in.
    [[nodiscard]] bool isWaiting() const;
    /// The names of those that still run.
    [[nodiscard]] QStringList runningNames() const;

signals:
    void started();
    /// Sent for each sequence, and not once more for the same run.
    void sequenceEnded(const QList<int> &systems, const KVKLuaEnd &end);
    /// Sent when the last one has ended.
    void allEnded();

private:
    void ended(const RunningSequence &sequence);

    StationConfig m_config;
    std::vector<KVKBoundFunction> m_functions;
    platform::Dictionary m_constants;
    QList<KVKExtensionInterruption *> m_interruptions;
    ResultsFile &m_results;
    std::vector<std::unique_ptr<RunningSequence>> m_sequences;
    int m_running = 0;
    bool m_allPassed = true;
};

} // namespace station

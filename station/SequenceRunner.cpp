#include "station/SequenceRunner.h"

#include "kovan/KovanUIExtension/KVKExtensionInterruption.h"
#include "platform/MainQueue.h"

#include <algorithm>

namespace station {

SequenceRunner::SequenceRunner(const StationConfig &config, std::vector<KVKBoundFunction> functions,
                               platform::Dictionary constants,
                               QList<KVKExtensionInterruption *> interruptions, ResultsFile &results)
    : m_config(config)
    , m_functions(std::move(functions))
    , m_constants(std::move(constants))
    , m_interruptions(std::move(interruptions))
    , m_results(results)
{}

SequenceRunner::~SequenceRunner()
{
    stop();
    platform::MainQueue::drainUntil([this] { return m_running == 0; });
}

void SequenceRunner::start()
{
    if (isRunning())
        return;
    m_sequences.clear();
    m_allPassed = true;
    for (KVKExtensionInterruption *interruption : m_interruptions)
        interruption->acceptCalls();
    for (RunningSequence::Plan plan : planSequences(m_config)) {
        for (auto constant = m_constants.cbegin(); constant != m_constants.cend(); ++constant)
            plan.globals.insert(constant.key(), constant.value());
        m_sequences.push_back(std::make_unique<RunningSequence>(
            plan, m_functions, m_results, [this](const RunningSequence &sequence) { ended(sequence); }));
    }
    m_running = static_cast<int>(m_sequences.size());
    Q_EMIT started();
    for (const auto &sequence : m_sequences)
        sequence->start();
    if (m_running == 0)
        Q_EMIT allEnded();
}

void SequenceRunner::stop()
{
    if (!isRunning())
        return;
    // First the scripts, so that none begins another call after its waiting one was ended.
    for (const auto &sequence : m_sequences)
        sequence->requestStop();
    for (KVKExtensionInterruption *interruption : m_interruptions)
        interruption->interruptWaitingCalls();
}

bool SequenceRunner::isWaiting() const
{
    return isRunning() && std::all_of(m_sequences.cbegin(), m_sequences.cend(), [](const auto &sequence) {
               return sequence->end() || sequence->isInCall();
           });
}

QStringList SequenceRunner::runningNames() const
{
    QStringList names;
    for (const auto &sequence : m_sequences) {
        if (!sequence->end())
            names.append(sequence->name());
    }
    return names;
}

void SequenceRunner::ended(const RunningSequence &sequence)
{
    --m_running;
    m_allPassed = m_allPassed && sequence.end()->outcome == KVKLuaOutcome::Passed;
    Q_EMIT sequenceEnded(sequence.systems(), *sequence.end());
    if (m_running == 0)
        Q_EMIT allEnded();
}

} // namespace station

#include "station/SequenceRunner.h"

#include "kovan/KovanUIExtension/KVKExtensionAnswerRelay.h"
#include "kovan/KovanUIExtension/KVKExtensionGuidanceRelay.h"
#include "kovan/KovanUIExtension/KVKExtensionInterruption.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/MainQueue.h"

namespace station {

SequenceRunner::SequenceRunner(const StationConfig &config, std::vector<KVKBoundFunction> functions,
                               platform::Dictionary constants,
                               QList<KVKExtensionInterruption *> interruptions, Results &results)
    : m_config(config)
    , m_functions(std::move(functions))
    , m_constants(std::move(constants))
    , m_interruptions(std::move(interruptions))
    , m_results(results)
{
    KVKExtensionStatusRelay::sharedStatusRelay()->setWaitHandler(&RunningSequence::callWaits);
    KVKExtensionGuidanceRelay::sharedGuidanceRelay()->setFolderHandler(&RunningSequence::folderOfCall);
    KVKExtensionAnswerRelay::sharedAnswerRelay()->setHandler(&RunningSequence::callAnswers);
}

SequenceRunner::~SequenceRunner()
{
    KVKExtensionStatusRelay::sharedStatusRelay()->setWaitHandler({});
    KVKExtensionGuidanceRelay::sharedGuidanceRelay()->setFolderHandler({});
    stop();
    // A sequence that ends tells so by a job of the main queue, and may need others of its jobs before that.
    platform::MainQueue::drainUntil([this] { return m_running == 0; });
    KVKExtensionAnswerRelay::sharedAnswerRelay()->setHandler({});
}

void SequenceRunner::start(const QString &operatorBadge)
{
    if (isRunning())
        return;
    m_sequences.clear();
    for (KVKExtensionInterruption *interruption : m_interruptions)
        interruption->acceptCalls();
    const QList<RunningSequence::Plan> plans = planSequences(m_config);
    // Made anew: what sequences share, hold and wait for is a run's own.
    const auto run = std::make_shared<KVKLuaRun>(partnersOf(plans));
    for (RunningSequence::Plan plan : plans) {
        for (auto constant = m_constants.cbegin(); constant != m_constants.cend(); ++constant)
            plan.globals.insert(constant.key(), constant.value());
        if (!operatorBadge.isEmpty())
            plan.globals.insert(QStringLiteral("operatorBadge"), operatorBadge);
        const std::size_t number = m_sequences.size();
        m_sequences.push_back(
            std::make_unique<RunningSequence>(plan, m_functions, RunningSequence::Place{run, number},
                                              m_results, listenerOf(static_cast<int>(number))));
    }
    m_running = static_cast<int>(m_sequences.size());
    m_ranNothing = m_running == 0;
    // Nothing was tested, so nothing has passed.
    m_allPassed = !m_ranNothing;
    m_wasStopped = false;
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

RunningSequence::Listener SequenceRunner::listenerOf(int sequence)
{
    return {[this, sequence](const KVKCallWait &wait) { Q_EMIT sequenceWaits(sequence, wait); },
            [this, sequence](const KVKLuaEnd &end) { ended(sequence, end); },
            [this, sequence](const KVKLuaCall &call) { Q_EMIT sequenceAnswered(sequence, call); }};
}

QList<QList<int>> SequenceRunner::systemsOfSequences() const
{
    QList<QList<int>> systems;
    for (const auto &sequence : m_sequences)
        systems.append(sequence->systems());
    return systems;
}

QStringList SequenceRunner::scriptsOfSequences() const
{
    QStringList scripts;
    for (const auto &sequence : m_sequences)
        scripts.append(sequence->script());
    return scripts;
}

QList<quint64> SequenceRunner::callsUnderWay() const
{
    QList<quint64> calls;
    for (const auto &sequence : m_sequences) {
        // Whoever waits for others goes on when they do: it is they that are looked at.
        if (sequence->end() || sequence->waitsForOthers())
            continue;
        calls.append(sequence->callNumber());
        // A sequence that is in no call is at work by itself: the run does not stand still.
        if (calls.constLast() == 0)
            return {};
    }
    return calls;
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

void SequenceRunner::ended(int sequence, const KVKLuaEnd &end)
{
    --m_running;
    m_allPassed = m_allPassed && end.outcome == KVKLuaOutcome::Passed;
    m_wasStopped = m_wasStopped || end.outcome == KVKLuaOutcome::Stopped;
    Q_EMIT sequenceEnded(sequence, end);
    if (m_running == 0)
        Q_EMIT allEnded();
}

} // namespace station

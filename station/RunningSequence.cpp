#include "station/RunningSequence.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "platform/MainQueue.h"
#include "station/AnswerText.h"

#include <QFileInfo>
#include <QHash>

#include <utility>

namespace station {

namespace {

std::atomic<quint64> lastCallNumber{0};

/// The sequence whose call runs on this thread.
thread_local RunningSequence *inCall = nullptr;

/// The sequence whose thread this is.
thread_local const RunningSequence *ofThread = nullptr;

platform::Dictionary groupGlobals(int groupNumber, const QString &group)
{
    return {{QStringLiteral("groupNumber"), static_cast<qlonglong>(groupNumber)},
            {QStringLiteral("groupName"), group}};
}

RunningSequence::Plan planForSystem(const QString &script, const StationConfig &config, int system)
{
    const QString group = config.systemGroups.at(system);
    RunningSequence::Plan plan;
    plan.script = script;
    plan.owner = {QFileInfo(script).fileName(), static_cast<qlonglong>(system), {}};
    plan.owner.groupName = group;
    plan.owner.slotNames = {config.systemSlots.at(system)};
    plan.group = group;
    plan.systems = {system};
    plan.globals = groupGlobals(static_cast<int>(config.groups().indexOf(group)), group);
    plan.globals.insert(QStringLiteral("systemIndex"), static_cast<qlonglong>(system));
    plan.globals.insert(QStringLiteral("slotName"), config.systemSlots.at(system));
    return plan;
}

RunningSequence::Plan planForGroup(const QString &script, const StationConfig &config, int groupNumber)
{
    const QString group = config.groups().at(groupNumber);
    RunningSequence::Plan plan;
    plan.script = script;
    plan.owner = {QFileInfo(script).fileName(), {}, group};
    plan.owner.groupName = group;
    plan.group = group;
    for (int system = 0; system < config.systemGroups.size(); ++system) {
        if (config.systemGroups.at(system) != group)
            continue;
        plan.systems.append(system);
        plan.owner.slotNames.append(config.systemSlots.at(system));
    }
    plan.globals = groupGlobals(groupNumber, group);
    return plan;
}

RunningSequence::Plan planForStation(const QString &script, const StationConfig &config)
{
    RunningSequence::Plan plan;
    plan.script = script;
    plan.owner = {QFileInfo(script).fileName(), {}, {}};
    for (int system = 0; system < config.systemGroups.size(); ++system)
        plan.systems.append(system);
    plan.owner.slotNames = config.systemSlots;
    return plan;
}

} // namespace

RunningSequence::RunningSequence(const Plan &plan, const std::vector<KVKBoundFunction> &functions,
                                 Place place, Results &results, Listener listener)
    : m_plan(plan)
    , m_results(results)
    , m_listener(std::move(listener))
    , m_alive(std::make_shared<bool>(true))
    , m_sequence({plan.script, plan.globals, functions, std::move(place.run), place.partner, plan.limits},
                 *this)
{}

RunningSequence::~RunningSequence() = default;

void RunningSequence::start()
{
    // Before its first call can be told.
    m_results.beginSequence(m_plan.owner);
    m_sequence.start();
}

void RunningSequence::callWaits(const KVKCallWait &wait)
{
    if (inCall)
        inCall->tellWait(wait);
}

QString RunningSequence::folderOfCall()
{
    return inCall ? QFileInfo(inCall->m_plan.script).absolutePath() : QString();
}

QList<int> RunningSequence::systemsOfThread()
{
    return ofThread ? ofThread->m_plan.systems : QList<int>();
}

void RunningSequence::sequenceBegins()
{
    ofThread = this;
}

void RunningSequence::callAnswers(const KVKGivenAnswer &answer)
{
    if (inCall)
        inCall->keepAnswer(answer);
}

/// Before the operator sees that it was accepted. Of the arguments the results need the configuration alone.
void RunningSequence::keepAnswer(const KVKGivenAnswer &answer)
{
    if (std::exchange(m_isKept, true))
        return;
    m_results.writeCall(m_plan.owner, {m_callName, {answer.configuration}, answer.result, answer.error},
                        m_callStart.value_or(CallStart()));
}

void RunningSequence::sequenceCalls(const QString &name)
{
    m_callName = name;
    // A number of its own for each call of the process: whoever looks twice sees whether it is still the same
    // one that goes on.
    m_call = ++lastCallNumber;
    inCall = this;
    m_callStart.emplace();
}

void RunningSequence::sequenceCalled(const KVKLuaCall &call)
{
    inCall = nullptr;
    // A call that is over waits for nothing, whether its plug-in has said so or not.
    if (m_waits)
        tellWait({});
    m_call = 0;
    // One that was refused before it began took no time.
    const CallStart start = std::exchange(m_callStart, {}).value_or(CallStart());
    if (!std::exchange(m_isKept, false))
        m_results.writeCall(m_plan.owner, call, start);
    if (isShown(call))
        tellAnswer(call);
}

void RunningSequence::tellAnswer(const KVKLuaCall &call)
{
    // A copy that shares nothing: the sequence may go on with what it was given.
    const KVKLuaCall own{call.name, platform::ownCopy(call.arguments).toList(),
                         platform::ownCopy(call.result), call.error};
    platform::MainQueue::async([this, own, alive = std::weak_ptr<bool>(m_alive)] {
        if (!alive.expired())
            m_listener.answered(own);
    });
}

void RunningSequence::sequenceWaits(const KVKLuaWait &wait)
{
    m_waitsForOthers = !wait.what.isEmpty() && !wait.hasLimit;
    tellWait({wait.what, {}});
}

void RunningSequence::tellWait(const KVKCallWait &wait)
{
    m_waits = !wait.what.isEmpty();
    // The job may come after the sequence has gone, which alive tells; both end on the main thread.
    platform::MainQueue::async([this, wait, alive = std::weak_ptr<bool>(m_alive)] {
        if (!alive.expired())
            m_listener.waits(wait);
    });
}

void RunningSequence::sequenceEnded(const KVKLuaEnd &end)
{
    if (end.outcome == KVKLuaOutcome::Erred) {
        const QString traceback = end.traceback.isEmpty() ? QString() : QLatin1Char('\n') + end.traceback;
        KVKLogEvent(KVKLogLevel::Error, "%@: %@%@", {name(), end.message, traceback});
    }
    // What is not written must not keep the run from ending.
    try {
        m_results.writeEnd(m_plan.owner, end);
    } catch (...) {
        KVKLogEvent(KVKLogLevel::Error, "results of %@ are lost: %@",
                    {name(), KVKTextOfException(std::current_exception())});
    }
    platform::MainQueue::async([this, end, alive = std::weak_ptr<bool>(m_alive)] {
        if (alive.expired())
            return;
        m_end = end;
        m_listener.ended(end);
    });
}

QList<RunningSequence::Plan> planSequences(const StationConfig &config)
{
    QList<RunningSequence::Plan> plans;
    for (const SequenceEntry &entry : config.sequences) {
        switch (entry.kind) {
        case SequenceKind::System:
            for (int system = 0; system < config.systemGroups.size(); ++system)
                plans.append(planForSystem(entry.script, config, system));
            break;
        case SequenceKind::Group:
            for (int group = 0; group < config.groups().size(); ++group)
                plans.append(planForGroup(entry.script, config, group));
            break;
        case SequenceKind::Station:
            plans.append(planForStation(entry.script, config));
            break;
        }
    }
    for (qsizetype i = 0; i < plans.size(); ++i) {
        plans[i].owner.number = static_cast<int>(i);
        plans[i].limits = config.lua;
    }
    return plans;
}

std::vector<KVKLuaPartner> partnersOf(const QList<RunningSequence::Plan> &plans)
{
    QHash<QString, int> counts;
    for (const RunningSequence::Plan &plan : plans)
        ++counts[plan.owner.name()];
    std::vector<KVKLuaPartner> partners;
    for (const RunningSequence::Plan &plan : plans) {
        const QString name = plan.owner.name();
        const bool isOnly = counts.value(name) == 1;
        partners.push_back(
            {isOnly ? name : QStringLiteral("%1 (%2)").arg(name, plan.owner.sequence), plan.group});
    }
    return partners;
}

} // namespace station

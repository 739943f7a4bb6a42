#include "station/RunningSequence.h"

#include "platform/MainQueue.h"

#include <QFileInfo>

namespace station {

namespace {

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
    for (int system = 0; system < config.systemGroups.size(); ++system) {
        if (config.systemGroups.at(system) == group)
            plan.systems.append(system);
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
    return plan;
}

} // namespace

RunningSequence::RunningSequence(const Plan &plan, const std::vector<KVKBoundFunction> &functions,
                                 ResultsFile &results, Ended ended)
    : m_plan(plan)
    , m_results(results)
    , m_ended(std::move(ended))
    , m_alive(std::make_shared<bool>(true))
    , m_sequence({plan.script, plan.globals, functions}, *this)
{}

RunningSequence::~RunningSequence() = default;

void RunningSequence::sequenceCalls(const QString &)
{
    m_inCall = true;
}

void RunningSequence::sequenceCalled(const KVKLuaCall &call)
{
    m_inCall = false;
    m_results.writeCall(m_plan.owner, call);
}

void RunningSequence::sequenceEnded(const KVKLuaEnd &end)
{
    m_results.writeEnd(m_plan.owner, end);
    platform::MainQueue::async([this, end, alive = std::weak_ptr<bool>(m_alive)] {
        if (alive.expired())
            return;
        m_end = end;
        m_ended(*this);
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
    return plans;
}

} // namespace station

#include "station/RunStates.h"

#include <algorithm>
#include <utility>

namespace station {

namespace {

const QString ForOperator = QStringLiteral("the operator");

SystemState stateOf(KVKLuaOutcome outcome)
{
    switch (outcome) {
    case KVKLuaOutcome::Passed:
        return SystemState::Passed;
    case KVKLuaOutcome::Failed:
        return SystemState::Failed;
    case KVKLuaOutcome::Erred:
        return SystemState::Erred;
    case KVKLuaOutcome::Stopped:
        return SystemState::Stopped;
    }
    return SystemState::Idle;
}

/// An end that says more about the unit is worse: what went wrong by itself outweighs what was broken off.
int badness(KVKLuaOutcome outcome)
{
    switch (outcome) {
    case KVKLuaOutcome::Passed:
        return 0;
    case KVKLuaOutcome::Stopped:
        return 1;
    case KVKLuaOutcome::Failed:
        return 2;
    case KVKLuaOutcome::Erred:
        break;
    }
    return 3;
}

} // namespace

RunStates::RunStates(const QList<QList<int>> &sequences, const QStringList &scripts)
{
    for (qsizetype i = 0; i < sequences.size(); ++i)
        m_sequences.append({sequences.at(i), scripts.value(i), {}, false, {}});
}

void RunStates::waits(int sequence, const KVKCallWait &wait)
{
    m_sequences[sequence].wait = wait;
}

void RunStates::ended(int sequence, const KVKLuaEnd &end)
{
    m_sequences[sequence].wait = {};
    m_sequences[sequence].hasEnded = true;
    m_sequences[sequence].end = end;
}

RunStates::Shown RunStates::of(int system) const
{
    bool runs = false;
    QString waitsFor;
    const KVKLuaEnd *worst = nullptr;
    for (const Sequence &sequence : m_sequences) {
        if (!sequence.systems.contains(system))
            continue;
        runs = runs || !sequence.hasEnded;
        // Of several waits the one that a person can end.
        if (waitsFor.isEmpty() || sequence.wait.what == ForOperator)
            waitsFor = sequence.wait.what;
        if (sequence.hasEnded && (!worst || badness(sequence.end.outcome) > badness(worst->outcome)))
            worst = &sequence.end;
    }
    if (!waitsFor.isEmpty())
        return {SystemState::Waiting, waitsFor, scriptsOf(system)};
    if (runs)
        return {SystemState::Running, {}, scriptsOf(system)};
    if (!worst)
        return {};
    // Why a sequence was stopped or failed is no news; where it went wrong is.
    return {stateOf(worst->outcome), worst->outcome == KVKLuaOutcome::Erred ? worst->message : QString(),
            scriptsOf(system)};
}

QString RunStates::scriptsOf(int system) const
{
    QStringList running;
    QStringList all;
    for (const Sequence &sequence : m_sequences) {
        if (!sequence.systems.contains(system))
            continue;
        all.append(sequence.script);
        if (!sequence.hasEnded)
            running.append(sequence.script);
    }
    QStringList &shown = running.isEmpty() ? all : running;
    shown.removeDuplicates();
    return shown.join(QStringLiteral(", "));
}

RunStates::Progress RunStates::progress() const
{
    struct Ends
    {
        bool areAll = true;
        int worst = 0;
    };
    QMap<int, Ends> ends;
    for (const Sequence &sequence : m_sequences) {
        for (const int system : sequence.systems) {
            Ends &its = ends[system];
            its.areAll = its.areAll && sequence.hasEnded;
            its.worst = std::max(its.worst, sequence.hasEnded ? badness(sequence.end.outcome) : 0);
        }
    }
    Progress progress;
    progress.all = static_cast<int>(ends.size());
    for (const Ends &its : std::as_const(ends)) {
        if (its.areAll)
            ++(its.worst == badness(KVKLuaOutcome::Stopped) ? progress.stopped : progress.done);
    }
    return progress;
}

QList<quint64> RunStates::framed() const
{
    QList<quint64> systems;
    for (const Sequence &sequence : m_sequences) {
        if (sequence.wait.what == ForOperator)
            systems += sequence.wait.systems;
    }
    return systems;
}

} // namespace station

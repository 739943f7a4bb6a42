#include "station/RunBoard.h"

#include "station/AnswerText.h"
#include "station/SequenceRunner.h"
#include "station/window/OperatorText.h"
#include "station/window/StationWindow.h"

#include <utility>

namespace station {

RunBoard::RunBoard(const StationConfig &config, SequenceRunner &runner, StationWindow &window)
    : m_runner(runner)
    , m_window(window)
    , m_systems(config.systems())
    , m_groups(config.groups())
{
    connect(&runner, &SequenceRunner::sequenceWaits, this, &RunBoard::sequenceWaits);
    connect(&runner, &SequenceRunner::sequenceAnswered, this, &RunBoard::sequenceAnswered);
    connect(&runner, &SequenceRunner::sequenceEnded, this, &RunBoard::sequenceEnded);
}

void RunBoard::begin()
{
    m_states = RunStates(m_runner.systemsOfSequences(), m_runner.scriptsOfSequences());
    for (const SystemRow &row : std::as_const(m_systems)) {
        m_window.setSystemAnswer(row.index, {});
        showStates({row.index});
    }
    showFrames();
    showProgress();
}

void RunBoard::sequenceWaits(int sequence, const KVKCallWait &wait)
{
    m_states.waits(sequence, wait);
    showStates(m_states.systemsOf(sequence));
    showFrames();
}

void RunBoard::sequenceAnswered(int sequence, const KVKLuaCall &call)
{
    for (const int system : askedBy(sequence, call))
        m_window.setSystemAnswer(system, answerText(call, m_systems.value(system).slotName));
}

/// A sequence may ask for others than those that it runs for: the first argument tells for whom.
QList<int> RunBoard::askedBy(int sequence, const KVKLuaCall &call) const
{
    const platform::Value first = call.arguments.value(0);
    const qint64 number = platform::isNumber(first) ? platform::integerValue(first) : -1;
    if (call.name == QLatin1String("showView") && number >= 0 && number < m_systems.size())
        return {static_cast<int>(number)};
    if (call.name != QLatin1String("showGroupView") || number < 0 || number >= m_groups.size())
        return m_states.systemsOf(sequence);
    QList<int> systems;
    for (const SystemRow &row : m_systems) {
        if (row.group == m_groups.at(number))
            systems.append(row.index);
    }
    return systems;
}

void RunBoard::sequenceEnded(int sequence, const KVKLuaEnd &end)
{
    m_states.ended(sequence, end);
    showStates(m_states.systemsOf(sequence));
    showFrames();
    showProgress();
}

void RunBoard::showStates(const QList<int> &systems)
{
    for (const int system : systems) {
        const RunStates::Shown shown = m_states.of(system);
        m_window.setSystemState(system, shown.state, operatorText(shown.text));
        m_window.setSystemSequence(system, shown.scripts);
    }
}

void RunBoard::showFrames()
{
    const QList<quint64> framed = m_states.framed();
    // The new ones first: a row that stays framed does not flicker.
    for (const quint64 system : framed)
        m_window.highlightSystem(system, true);
    for (const quint64 system : std::exchange(m_framed, framed))
        m_window.highlightSystem(system, false);
}

void RunBoard::showProgress()
{
    const RunStates::Progress progress = m_states.progress();
    m_window.setProgress(progress.done, progress.stopped, progress.all);
}

} // namespace station

#pragma once

#include "station/RunStates.h"
#include "station/StationConfig.h"

#include <QObject>

namespace station {

class SequenceRunner;
class StationWindow;

/// Shows in the window how far the runs of a runner are: states, scripts, answers and frames of the systems'
/// rows, and the progress.
///
/// Thread: the main thread. Ownership: refers to both, which must outlive it.
class RunBoard : public QObject
{
    Q_OBJECT
public:
    RunBoard(const StationConfig &config, SequenceRunner &runner, StationWindow &window);

    /// Shows the run that the runner has just started, with nothing left of the one before.
    void begin();

private:
    void sequenceWaits(int sequence, const KVKCallWait &wait);
    void sequenceAnswered(int sequence, const KVKLuaCall &call);
    void sequenceEnded(int sequence, const KVKLuaEnd &end);
    [[nodiscard]] QList<int> askedBy(int sequence, const KVKLuaCall &call) const;
    void showStates(const QList<int> &systems);
    void showFrames();
    void showProgress();

    SequenceRunner &m_runner;
    StationWindow &m_window;
    QList<SystemRow> m_systems;
    QStringList m_groups;
    RunStates m_states;
    QList<quint64> m_framed; ///< The systems that m_states has put a frame around.
};

} // namespace station

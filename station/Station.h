#pragma once

#include "station/CommandLine.h"
#include "station/IdleWatch.h"
#include "station/LogFile.h"
#include "station/PluginHost.h"
#include "station/RunBoard.h"
#include "station/Senses.h"
#include "station/SequenceRunner.h"
#include "station/StationConfig.h"
#include "station/operator/OperatorScript.h"
#include "station/record/Recording.h"
#include "station/results/RefusalNotes.h"
#include "station/results/Results.h"
#include "station/window/StationWindow.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <list>
#include <memory>
#include <optional>

namespace station {

/// The whole program: configuration, plug-ins, window, sequences, and the simulated operator where one is
/// given.
///
/// Thread: the main thread. Requires: a QApplication, platform::MainQueue attached.
class Station : public QObject
{
    Q_OBJECT
public:
    /// Errors: throws StationError when the station cannot start.
    explicit Station(const CommandLine &commandLine);
    ~Station() override;

    /// Shows the window and serves it until the end. Returns the exit status: 0 when every sequence passed, 1
    /// when one did not or the operator's script failed.
    int run();

private:
    void serveConfiguration() const;
    void loadPlugins();
    void makeRunner();
    void makeWindow();
    void makeOperator();
    void connectRun();

    void startRun();
    void stopRun();
    void endNow();
    void endOperator();
    void runEnded();
    void operatorEnded(const OperatorScript::End &end);
    void endWhenDone();
    void lookForIdleWait();
    void lookForStuck();
    void reportStuck();
    [[noreturn]] void giveUp();
    /// Whether the program ends with its sequences, since no person presses Run again.
    [[nodiscard]] bool endsByItself() const;

    CommandLine m_commandLine;
    StationConfig m_config;
    LogFile m_log;
    Results m_results;
    RefusalNotes m_refusalNotes{m_results};
    Recording m_recording;
    std::list<LoadedPlugin> m_plugins;
    std::unique_ptr<SequenceRunner> m_runner;
    std::unique_ptr<StationWindow> m_window;
    std::unique_ptr<Senses> m_senses;
    std::unique_ptr<RunBoard> m_board;
    std::unique_ptr<OperatorScript> m_operator;
    QTimer m_idleWait;  ///< Looks whether sequences wait for an operator that is not there or not any more.
    QTimer m_unwritten; ///< Tries to write what results could not be written.
    QTimer m_stuck;     ///< Looks whether all sequences that were stopped have ended.
    int m_stuckLooks = 0;
    std::optional<std::chrono::steady_clock::time_point> m_endLimit; ///< Set once the program is to end.
    bool m_operatorDone = true;
    bool m_operatorFailed = false;
    IdleWatch m_idleWatch;
};

} // namespace station

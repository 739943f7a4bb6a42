#pragma once

#include "station/operator/OperatorStage.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace station {

class OperatorRun;

/// A simulated operator: a Lua script on a thread of its own that works the station's window with real key
/// and mouse events, through the functions of its table `operator` (see OperatorFunctions.h).
///
/// Thread: the main thread. Requires: platform::MainQueue is attached and served while the script runs; the
/// stage outlives the script, or the script fails with a text that says so.
class OperatorScript
{
public:
    /// How a script ended.
    struct End
    {
        bool ok = false;
        QString message;   ///< Why it failed, "file:line: text" where Lua knows them.
        QString traceback; ///< The calls that led to it, as in KVKLuaRunner.
    };
    /// Receives how the script ended. Called once, on the main thread, not after the OperatorScript is gone.
    using Finished = std::function<void(const End &end)>;

    OperatorScript(const QString &path, const OperatorStage &stage, Finished finished);
    /// Stops the script and returns when its thread has ended; serves the main queue meanwhile.
    ~OperatorScript();
    OperatorScript(const OperatorScript &) = delete;
    OperatorScript &operator=(const OperatorScript &) = delete;

    /// Starts the thread. Called once.
    void start();
    /// Ends waits, sleeps and loops of the script, which then fails with "stopped". Thread: any.
    void stop();
    [[nodiscard]] bool isFinished() const;
    /// Stops the script and serves the main queue until its thread has ended, at the latest until a point in
    /// time; says whether it has. A script inside a library function (a child process, an endless search)
    /// does not end.
    [[nodiscard]] bool endBy(std::chrono::steady_clock::time_point limit);

private:
    std::shared_ptr<OperatorRun> m_run;
};

} // namespace station

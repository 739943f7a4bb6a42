#include "station/operator/OperatorScript.h"

#include "platform/MainQueue.h"
#include "station/operator/OperatorActions.h"
#include "station/operator/OperatorLua.h"

#include <atomic>
#include <system_error>
#include <thread>
#include <utility>

namespace station {

using platform::MainQueue;

/// What the script's thread and the main thread share.
class OperatorRun
{
public:
    OperatorRun(QString scriptPath, const OperatorStage &stage, OperatorScript::Finished callback)
        : path(std::move(scriptPath))
        , limits(stage.lua)
        , actions(stage)
        , finished(std::move(callback))
    {}

    const QString path;
    const KVKLuaLimits limits;
    OperatorActions actions;
    OperatorScript::Finished finished; ///< Main thread.
    std::atomic<bool> ended{false};
    std::thread thread;
};

namespace {

/// Tells the main thread how the script ended.
void tellEnd(const std::shared_ptr<OperatorRun> &run, const OperatorScript::End &end)
{
    run->ended = true;
    MainQueue::async([run, end] {
        // Taken out first: the callback may let go of the script, and with it of the callback.
        if (const OperatorScript::Finished finished = std::exchange(run->finished, nullptr))
            finished(end);
    });
    MainQueue::wake();
}

} // namespace

OperatorScript::OperatorScript(const QString &path, const OperatorStage &stage, Finished finished)
    : m_run(std::make_shared<OperatorRun>(path, stage, std::move(finished)))
{}

OperatorScript::~OperatorScript()
{
    stop();
    m_run->finished = nullptr;
    if (!m_run->thread.joinable())
        return;
    // The script may be waiting for the main thread, which is this one.
    MainQueue::drainUntil([this] { return m_run->ended.load(); });
    m_run->thread.join();
}

void OperatorScript::start()
{
    try {
        m_run->thread = std::thread([run = m_run] {
            const KVKLuaRunner::End end = runOperatorScript(run->path, run->limits, run->actions);
            tellEnd(run, {end.ok, end.message, end.traceback});
        });
    } catch (const std::system_error &problem) {
        const QString why = QString::fromUtf8(problem.what());
        tellEnd(m_run, {false, QStringLiteral("no thread for the script: %1").arg(why), {}});
    }
}

void OperatorScript::stop()
{
    m_run->actions.stop();
}

bool OperatorScript::endBy(std::chrono::steady_clock::time_point limit)
{
    stop();
    return !m_run->thread.joinable() || MainQueue::drainUntil([this] { return m_run->ended.load(); }, limit);
}

bool OperatorScript::isFinished() const
{
    return m_run->ended;
}

} // namespace station

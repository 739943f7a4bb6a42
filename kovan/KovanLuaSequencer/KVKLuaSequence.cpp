#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"

#include "kovan/KovanLuaSequencer/KVKLuaBindings.h"

#include <atomic>
#include <system_error>
#include <thread>
#include <utility>

struct KVKLuaSequence::Run
{
    Run(Description given, KVKLuaSequenceObserver &told)
        : description(std::move(given))
        , observer(told)
        , scope(description.functions, description.globals, observer)
    {}

    Description description;
    KVKLuaSequenceObserver &observer;
    KVKLuaScope scope;
    std::atomic<bool> ended{false};
    std::thread thread;
};

namespace {

KVKLuaEnd erred(const QString &message)
{
    return {KVKLuaOutcome::Erred, {}, message};
}

KVKLuaEnd run(const QString &path, KVKLuaScope &scope)
{
    const KVKLuaRunner::End end = scope.run(path);
    if (scope.isStopped())
        return {KVKLuaOutcome::Stopped, {}, QStringLiteral("stopped")};
    if (!end.ok)
        return erred(end.message);
    const bool failed = end.value.metaType() == QMetaType::fromType<bool>() && !end.value.toBool();
    return {failed ? KVKLuaOutcome::Failed : KVKLuaOutcome::Passed, end.value, {}};
}

} // namespace

KVKLuaSequence::KVKLuaSequence(Description description, KVKLuaSequenceObserver &observer)
    : m_run(std::make_shared<Run>(std::move(description), observer))
{}

KVKLuaSequence::~KVKLuaSequence()
{
    requestStop();
    if (m_run->thread.joinable())
        m_run->thread.join();
}

void KVKLuaSequence::start()
{
    try {
        m_run->thread = std::thread([shared = m_run] {
            shared->observer.sequenceEnded(run(shared->description.scriptPath, shared->scope));
            shared->ended = true;
        });
    } catch (const std::system_error &problem) {
        m_run->ended = true;
        m_run->observer.sequenceEnded(
            erred(QStringLiteral("no thread for the sequence: %1").arg(QString::fromUtf8(problem.what()))));
    }
}

void KVKLuaSequence::requestStop()
{
    m_run->scope.stop();
}

bool KVKLuaSequence::hasEnded() const
{
    return m_run->ended;
}

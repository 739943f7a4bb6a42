#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanLuaSequencer/KVKLuaBindings.h"
#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "kovan/KovanLuaSequencer/KVKLuaRun.h"

#include <atomic>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

struct KVKLuaSequence::Run
{
    Run(Description given, KVKLuaSequenceObserver &told)
        : description(std::move(given))
        , observer(told)
        , scope(description.functions, description.globals, {description.run.get(), description.partner},
                description.limits, observer)
    {
        if (description.run && description.partner >= description.run->size())
            throw std::out_of_range("the run has no such sequence");
    }

    /// Tells the others of the run that they need not wait any more. Before the host is told, which may take
    /// its time.
    void leave() const
    {
        if (description.run)
            description.run->end(description.partner);
    }

    Description description;
    KVKLuaSequenceObserver &observer;
    KVKLuaScope scope;
    std::atomic<bool> ended{false};
    std::thread thread;
};

namespace {

KVKLuaEnd erred(const QString &message, const QString &traceback = {})
{
    return {KVKLuaOutcome::Erred, {}, message, traceback};
}

KVKLuaEnd run(const QString &path, KVKLuaScope &scope)
{
    const KVKLuaRunner::End end = scope.run(path);
    // First of all: how a stopped script ends says nothing, it may even have caught the error.
    if (scope.isStopped())
        return {KVKLuaOutcome::Stopped, {}, QStringLiteral("stopped"), {}};
    if (!end.ok)
        return erred(end.message, end.traceback);
    // Only false itself fails: a script that returns nothing has passed.
    const bool failed = end.value.metaType() == QMetaType::fromType<bool>() && !end.value.toBool();
    return {failed ? KVKLuaOutcome::Failed : KVKLuaOutcome::Passed, end.value, {}, {}};
}

/// An observer that breaks its promise not to throw is told of, and does not end the program.
void tellEnd(KVKLuaSequenceObserver &observer, const KVKLuaEnd &end) noexcept
{
    try {
        observer.sequenceEnded(end);
    } catch (...) {
        KVKLogEvent(KVKLogLevel::Error, "the end of a sequence was not taken: %@",
                    {KVKTextOfException(std::current_exception())});
    }
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
    m_run->leave();
}

void KVKLuaSequence::start()
{
    try {
        // The thread holds what it uses: an observer may let go of the sequence while it is told of the end.
        m_run->thread = std::thread([shared = m_run] {
            shared->observer.sequenceBegins();
            const KVKLuaEnd end = run(shared->description.scriptPath, shared->scope);
            shared->leave();
            tellEnd(shared->observer, end);
            shared->ended = true;
        });
    } catch (const std::system_error &problem) {
        m_run->ended = true;
        m_run->leave();
        tellEnd(
            m_run->observer,
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

#pragma once

#include "kovan/KovanLuaSequencer/KVKFunctionTable.h"
#include "kovan/KovanLuaSequencer/KVKLuaLimits.h"
#include "platform/Error.h"
#include "platform/Value.h"

#include <QString>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

/// How a sequence ended.
enum class KVKLuaOutcome {
    Passed,  ///< It returned true, nothing, or any other value than false.
    Failed,  ///< It returned false.
    Erred,   ///< It could not be loaded, or raised an error.
    Stopped, ///< The host stopped it.
};

/// One call of a plug-in's function, as it ended.
struct KVKLuaCall
{
    QString name;
    platform::Array arguments;
    platform::Value result;
    std::optional<platform::Error> error;
};

/// The end of a sequence.
struct KVKLuaEnd
{
    KVKLuaOutcome outcome = KVKLuaOutcome::Passed;
    platform::Value value;  ///< What it returned.
    QString message;        ///< Why it erred, with file and line; empty otherwise.
    QString traceback = {}; ///< The calls that led to it; see KVKLuaRunner::End.
};

/// What a sequence waits for among those of its run.
struct KVKLuaWait
{
    /// In words for the status table: `others at "start"`, `lock "meter"`. Empty when it waits no longer.
    QString what;
    bool hasLimit = false; ///< Whether the wait ends after a time by itself.
};

class KVKLuaRun;

/// Told what a sequence does. Called on the sequence's thread; must not throw.
class KVKLuaSequenceObserver
{
public:
    virtual ~KVKLuaSequenceObserver() = default;

    /// The first word: the thread that calls is the sequence's until its end.
    virtual void sequenceBegins() {}
    /// A call of a plug-in's function begins.
    virtual void sequenceCalls(const QString &name) = 0;
    /// It has ended, or was refused before it began.
    virtual void sequenceCalled(const KVKLuaCall &call) = 0;
    /// What the sequence waits for from now on. Not told where nobody has to wait.
    virtual void sequenceWaits(const KVKLuaWait &) {}
    /// The last word of a sequence; its thread ends right after. Where none could be made, called by start().
    virtual void sequenceEnded(const KVKLuaEnd &end) = 0;
};

/// A Lua script with a state and a thread of its own, which calls the functions of plug-ins.
///
/// The script sees the functions and constants under their own names, the globals that it is given,
/// `log(text)` and `sleep(seconds)`; with a run also `rendezvous`, `locked` and `shared`, which it has in
/// common with the others of the run. A function returns its result and an error (nil, or a table with
/// domain, code and message).
///
/// Thread: made, started and destroyed by one thread; requestStop() and hasEnded() on any.
/// Ownership: the observer and the functions' contexts must outlive the sequence; so must whatever its calls
/// wait for, since the destructor waits for the thread.
class KVKLuaSequence
{
public:
    struct Description
    {
        QString scriptPath;
        platform::Dictionary globals; ///< Constants of plug-ins included.
        std::vector<KVKBoundFunction> functions;
        std::shared_ptr<KVKLuaRun> run = nullptr; ///< Null for a sequence that runs by itself.
        std::size_t partner = 0; ///< Which one of the run's sequences this is; no other is the same.
        KVKLuaLimits limits = {};
    };

    /// Errors: throws std::out_of_range for a partner that the run does not have.
    KVKLuaSequence(Description description, KVKLuaSequenceObserver &observer);
    /// Requests the stop and joins the thread. One that was not started is not waited for by the others now.
    ~KVKLuaSequence();
    KVKLuaSequence(const KVKLuaSequence &) = delete;
    KVKLuaSequence &operator=(const KVKLuaSequence &) = delete;

    /// Called once.
    void start();
    /// Ends the script at its next instruction, and a sleep or a wait for others at once. A call into a
    /// plug-in goes on until the plug-in ends it.
    void requestStop();
    [[nodiscard]] bool hasEnded() const;

private:
    struct Run;
    std::shared_ptr<Run> m_run;
};

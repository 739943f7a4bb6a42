#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaLimits.h"
#include "platform/Value.h"

#include <QString>

struct lua_State;

/// Runs one Lua script: a state with Lua's libraries, the functions that the subclass gives it, modules found
/// beside the script, an end soon after it is to stop, and a text for whatever goes wrong. What a script
/// does, an endless recursion or a table that takes all memory included, ends that script and nothing else.
///
/// Everything that can raise a Lua error runs inside a protected call; functions for the script are made with
/// KVKLuaFunction (KVKLuaProtection.h).
///
/// A script has no os.setlocale, debug.debug, debug.sethook and io.read, and cannot read io.stdin. Its limits
/// say what it has of memory and of the functions that reach out of it.
///
/// Thread: one thread runs the script; isStopped() is asked there. Ownership: the runner outlives its state.
class KVKLuaRunner
{
public:
    /// How a script ended.
    struct End
    {
        bool ok = false;
        platform::Value value; ///< The first value that it returned.
        QString message;       ///< Why it failed, "file:line: text" where Lua knows them; empty otherwise.
        /// The calls that led to it, a line each, below "stack traceback:"; empty where the script did not
        /// run, or has no memory for it.
        QString traceback = {};
    };

    /// What sets one kind of script apart from others.
    struct Kind
    {
        const char *name;  ///< To whom a function is not available: "a sequence". A literal.
        bool givesAResult; ///< Otherwise what it returns is not looked at.
    };

    explicit KVKLuaRunner(const Kind &kind, KVKLuaLimits limits = {});
    virtual ~KVKLuaRunner();
    KVKLuaRunner(const KVKLuaRunner &) = delete;
    KVKLuaRunner &operator=(const KVKLuaRunner &) = delete;

    /// Runs a script, which is text and never precompiled, and returns when it has ended. Throws nothing.
    [[nodiscard]] End run(const QString &path) noexcept;

    /// The runner whose script, or whose script's coroutine, runs in the state.
    [[nodiscard]] static KVKLuaRunner &of(lua_State *state);

    /// Looks whether the script is to end, which otherwise happens every thousand instructions: many, where
    /// each of them is a call that takes its time. Called by functions for the script when they have done
    /// their work.
    static void look(lua_State *state);

    /// Whether the script is to end: soon, and after the call of a function at its next instruction.
    [[nodiscard]] virtual bool isStopped() const = 0;

protected:
    /// Gives the new state what the script finds in it. Runs in a protected call: may raise Lua errors, and
    /// therefore makes no C++ objects that have a destructor; throws nothing.
    virtual void bind(lua_State *state) = 0;

private:
    struct Source;

    [[nodiscard]] End runSource(Source source);
    static int runProtected(lua_State *state);
    static int noteTraceback(lua_State *state);
    void keepTraceback(lua_State *state) noexcept;

    Kind m_kind;
    KVKLuaLimits m_limits;
    QString m_traceback; ///< Of the error that ends the script.
};

#pragma once

#include "platform/Callback.h"

#include <QString>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

struct lua_State;

/// A function that was handed over could not be called, or has raised an error. The text holds the error and
/// the traceback of the function and of the call around it.
class KVKLuaCallbackError : public std::runtime_error
{
public:
    explicit KVKLuaCallbackError(const QString &text)
        : std::runtime_error(text.toStdString())
    {}
};

/// A Lua function among the arguments of a plug-in's function. Private to the sequencer.
///
/// Thread: the sequence's for everything but the destructor, which may run anywhere once giveBack() has run.
class KVKLuaCallback : public platform::Callback
{
public:
    /// Keeps the function at the stack index, whose name in errors is `path`; the stack is left as it was.
    /// Errors: throws KVKLuaCallbackError when the state has no memory for it.
    KVKLuaCallback(lua_State *state, int index, QString path);

    /// Calls the function in the state that the plug-in's function was called in. It cannot yield: a
    /// coroutine would leave the plug-in's function behind. Errors: throws KVKLuaCallbackError when the
    /// function raises an error, returns what has no counterpart among the values of the platform, or is
    /// called on another thread or after giveBack().
    [[nodiscard]] platform::Array call(const platform::Array &arguments) override;

    /// Lets go of the function: from now on call() throws. Never raises a Lua error.
    void giveBack() noexcept;

private:
    [[nodiscard]] platform::Array callIn(lua_State *state, const platform::Array &arguments) const;
    [[nodiscard]] platform::Array resultsAbove(lua_State *state, int top) const;

    QString m_path;
    std::thread::id m_thread;
    std::atomic<lua_State *> m_state; ///< Null once the function was given back.
    int m_reference = 0;
};

/// The functions among the arguments of one call, which are given back when it returns or throws.
class KVKLuaHandedOver
{
public:
    KVKLuaHandedOver() = default;
    ~KVKLuaHandedOver();
    KVKLuaHandedOver(const KVKLuaHandedOver &) = delete;
    KVKLuaHandedOver &operator=(const KVKLuaHandedOver &) = delete;

    [[nodiscard]] std::shared_ptr<platform::Callback> add(lua_State *state, int index, const QString &path);

private:
    std::vector<std::shared_ptr<KVKLuaCallback>> m_functions;
};

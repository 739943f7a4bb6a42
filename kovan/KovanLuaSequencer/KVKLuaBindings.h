#pragma once

#include "kovan/KovanLuaSequencer/KVKFunctionTable.h"
#include "kovan/KovanLuaSequencer/KVKLuaRunner.h"

#include <QByteArray>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <vector>

class KVKLuaRun;
class KVKLuaSequenceObserver;

/// Runs the script of a sequence, which finds the functions of plug-ins, `log`, `sleep` and its globals; one
/// that has a place in a run finds `rendezvous`, `locked` and `shared` as well. Private to the sequencer.
///
/// Thread: the sequence's, except stop() and isStopped().
class KVKLuaScope : public KVKLuaRunner
{
public:
    /// A sequence's place among the others of its run.
    struct Place
    {
        KVKLuaRun *run; ///< Null for a sequence that runs by itself.
        std::size_t partner;
    };

    KVKLuaScope(const std::vector<KVKBoundFunction> &functions, platform::Dictionary globals, Place place,
                KVKLuaLimits limits, KVKLuaSequenceObserver &observer);

    [[nodiscard]] static KVKLuaScope &of(lua_State *state);

    [[nodiscard]] const std::vector<KVKBoundFunction> &functions() const { return m_functions; }
    /// Constants of plug-ins included.
    [[nodiscard]] const platform::Dictionary &globals() const { return m_globals; }
    [[nodiscard]] KVKLuaSequenceObserver &observer() const { return m_observer; }
    [[nodiscard]] KVKLuaRun *sharedRun() const { return m_place.run; }
    [[nodiscard]] std::size_t partner() const { return m_place.partner; }

    void stop();
    [[nodiscard]] bool isStopped() const override { return m_stopped; }
    /// Returns after the time, or at once when stopped.
    void sleep(double seconds);

protected:
    void bind(lua_State *state) override;

private:
    const std::vector<KVKBoundFunction> &m_functions;
    std::vector<QByteArray> m_names; ///< Of the functions, in the bytes that Lua takes.
    platform::Dictionary m_globals;
    Place m_place;
    KVKLuaSequenceObserver &m_observer;
    std::atomic<bool> m_stopped{false};
    std::mutex m_mutex;
    std::condition_variable m_changed;
};

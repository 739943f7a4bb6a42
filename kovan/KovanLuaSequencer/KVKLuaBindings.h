#pragma once

#include "kovan/KovanLuaSequencer/KVKFunctionTable.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <vector>

struct lua_State;
class KVKLuaSequenceObserver;

/// What the functions of a sequence's state need to know. Private to the sequencer.
///
/// Thread: the sequence's, except stop() and isStopped(). Outlives the state.
class KVKLuaScope
{
public:
    KVKLuaScope(const std::vector<KVKBoundFunction> &functions, KVKLuaSequenceObserver &observer);

    [[nodiscard]] const std::vector<KVKBoundFunction> &functions() const { return m_functions; }
    [[nodiscard]] KVKLuaSequenceObserver &observer() const { return m_observer; }

    void stop();
    [[nodiscard]] bool isStopped() const { return m_stopped; }
    /// Returns after the time, or at once when stopped.
    void sleep(double seconds);

private:
    const std::vector<KVKBoundFunction> &m_functions;
    KVKLuaSequenceObserver &m_observer;
    std::atomic<bool> m_stopped{false};
    std::mutex m_mutex;
    std::condition_variable m_changed;
};

/// Gives a state the functions of the scope, `log` and `sleep`; takes from it what would end or block the
/// process; ends its script soon after the scope was stopped.
void KVKLuaBind(lua_State *state, KVKLuaScope &scope);

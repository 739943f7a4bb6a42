#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"

#include <atomic>

#include "bench/Clock.h"
#include "bench/Gate.h"

namespace interactive {
class InteractiveView;
} // namespace interactive

namespace bench {

/// A Lua sequence that asks each time the gate opens, and notes when its calls began and returned.
///
/// Thread: made and destroyed on the main thread; asked on any. Ownership: joins its thread, which has to end
/// first; plug-in and gate outlive it.
class TimedSequence : private KVKLuaSequenceObserver
{
public:
    TimedSequence(interactive::InteractiveView &plugin, Gate &gate, const QString &script,
                  const platform::Dictionary &globals);

    /// When its latest call of the plug-in began, and when it returned.
    [[nodiscard]] Nanoseconds called() const { return m_called; }
    [[nodiscard]] Nanoseconds returned() const { return m_returned; }
    /// How many have returned. Errors: one that is refused ends the program.
    [[nodiscard]] int returns() const { return m_returns; }
    [[nodiscard]] bool hasEnded() const { return m_hasEnded; }

private:
    void sequenceCalls(const QString &name) override;
    void sequenceCalled(const KVKLuaCall &call) override;
    void sequenceEnded(const KVKLuaEnd &end) override;

    std::atomic<Nanoseconds> m_called{0};
    std::atomic<Nanoseconds> m_returned{0};
    std::atomic<int> m_returns{0};
    std::atomic<bool> m_hasEnded{false};
    KVKLuaSequence m_sequence;
};

} // namespace bench

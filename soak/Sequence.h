#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"

#include <QString>

#include <atomic>
#include <memory>

namespace interactive {
class InteractiveView;
} // namespace interactive

namespace soak {

/// A Lua sequence that calls the plug-in, on a thread of its own.
///
/// Thread: made, asked and destroyed on the main thread. Ownership: joins its thread, which has to end first;
/// the plug-in outlives it.
class Sequence : private KVKLuaSequenceObserver
{
public:
    /// Runs the script with these globals.
    Sequence(interactive::InteractiveView &plugin, const QString &script,
             const platform::Dictionary &globals);

    /// Whether it has given back what it has to.
    [[nodiscard]] bool hasEnded() const { return m_hasEnded; }
    /// How it has ended. Requires: it has.
    [[nodiscard]] const KVKLuaEnd &end() const { return m_end; }

private:
    void sequenceCalls(const QString &) override {}
    void sequenceCalled(const KVKLuaCall &) override {}
    void sequenceEnded(const KVKLuaEnd &end) override;

    KVKLuaEnd m_end;
    std::atomic<bool> m_hasEnded{false};
    KVKLuaSequence m_sequence;
};

} // namespace soak

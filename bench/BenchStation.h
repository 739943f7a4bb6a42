#pragma once

#include "platform/Button.h"
#include "platform/TextField.h"
#include "plugin/InteractiveView.h"

#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "bench/Gate.h"
#include "bench/PaintWatch.h"
#include "bench/TimedSequence.h"
#include "soak/SoakStation.h"

namespace bench {

/// What is asked for: a value of each slot, every one on a panel of its own; one of each slot on the group's
/// panel, which takes twelve at most; or which slots of a group are to be used.
enum class PanelKind { Slot, Group, Switch };
inline constexpr int MostEntries = 12;

/// A station's plug-in in a window, for one benchmark: groups G1, G2, … with the slots S1, S2, … each.
///
/// Thread: the main thread. There is one at a time.
class BenchStation
{
public:
    explicit BenchStation(int slotsPerGroup, int groups = 2);
    ~BenchStation();
    BenchStation(const BenchStation &) = delete;
    BenchStation &operator=(const BenchStation &) = delete;

    [[nodiscard]] interactive::InteractiveView &plugin() { return m_station.plugin(); }
    [[nodiscard]] soak::SoakStation &parts() { return m_station; }
    [[nodiscard]] QWidget *window();

    /// Runs a sequence's work on a thread of its own and serves the main thread until it has ended.
    void runSequence(const std::function<void()> &work);
    /// Starts a sequence's work; finishSequence() waits for it.
    void startSequence(const std::function<void()> &work);
    void finishSequence();

    /// Starts Lua sequences that wait at the gate: one for each of so many systems, or one for all slots of
    /// the first group.
    void startAsking(PanelKind kind, int systems = 1);
    /// Opens the gate; all sequences ask.
    void ask() { m_gate.open(); }
    /// When the first of them called, and the last of them returned.
    [[nodiscard]] Nanoseconds firstCall() const;
    [[nodiscard]] Nanoseconds lastReturn() const;
    [[nodiscard]] const std::vector<std::unique_ptr<TimedSequence>> &sequences() const { return m_asking; }
    /// How many of their calls have returned altogether.
    [[nodiscard]] int returns() const;
    /// How many wait at the gate.
    [[nodiscard]] int atGate() const { return m_gate.waiting(); }
    /// Ends the calls that wait as Stop does, and has the sequences wait at the gate again.
    void endRound();

    /// The field that is written in, or null.
    [[nodiscard]] static platform::TextField *focusField();

    /// "S1" and so on.
    [[nodiscard]] static QString slotName(int slot);

private:
    soak::SoakStation m_station;
    int m_slots;
    Gate m_gate;
    std::vector<std::unique_ptr<TimedSequence>> m_asking;
    std::jthread m_sequence;
    std::atomic<bool> m_ended{true};
};

/// Whether all panels have been painted that such a question shows, since the watch began.
[[nodiscard]] bool hasPainted(const PaintWatch &watch, PanelKind kind, int slotCount);

} // namespace bench

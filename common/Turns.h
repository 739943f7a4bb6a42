#pragma once

#include <QString>

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>

namespace interactive {

/// Lets the calls whose panels would stand in the same group's band take turns, first come first served.
///
/// Slot panels of different systems share a band; a group panel, a message while it is drawn and an error
/// panel have it alone; two calls for the same panel never have their turns at once. A call waits for those
/// that came before it and whose panels cannot stand beside its own, also when they are still waiting
/// themselves: so a later slot panel does not overtake a group panel that queues.
///
/// Thread: any. Ownership: must outlive its turns.
class Turns
{
public:
    enum class Room { Shared, Alone };
    enum class Wake { Granted, Interrupted };

    /// A call's place in the queue from construction to destruction, which passes the turn on.
    class Turn
    {
    public:
        Turn(Turns &turns, const QString &band, const QString &panelKey, Room room);
        ~Turn();
        Turn(const Turn &) = delete;
        Turn &operator=(const Turn &) = delete;

        /// Whether nobody has to be waited for.
        [[nodiscard]] bool hasCome() const;
        /// Blocks until the turn has come, or until the host ends all calls.
        [[nodiscard]] Wake wait();

    private:
        Turns &m_turns;
        std::uint64_t m_number;
    };

    Turns() = default;
    Turns(const Turns &) = delete;
    Turns &operator=(const Turns &) = delete;

    /// Ends every wait for a turn, those that begin later included, until accept().
    void interrupt();
    void accept();
    /// How many calls have their turn or wait for it.
    [[nodiscard]] qsizetype count() const;

private:
    struct Entry
    {
        std::uint64_t number;
        QString band;
        QString panelKey;
        Room room;
        bool interrupted;
    };
    [[nodiscard]] static bool exclude(const Entry &a, const Entry &b);
    [[nodiscard]] const Entry &find(std::uint64_t number) const;
    [[nodiscard]] bool hasCome(const Entry &entry) const;

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Entry> m_queue; ///< In the order of arrival; those whose turn has come included.
    std::uint64_t m_nextNumber = 1;
    bool m_interrupted = false;
};

} // namespace interactive

#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>

namespace platform {

/// Lets one thread wait until another has done its part, without losing or keeping a signal.
///
/// A waiter takes a Place first, then makes public what can lead to the signal, then waits in its place.
/// signal() wakes exactly one taken place, the one taken first of those not signalled yet, also when its
/// owner has not begun to wait; with no such place it does nothing and is not remembered. Waking up without
/// a signal does not end a wait, and there is no time-out.
///
/// A Ticket remembers, at the moment an event happens (a button is pressed), which place that event can end.
/// signal(ticket) wakes that place or none, so that an event that comes too late for its own place cannot end
/// the next one.
///
/// Thread: any. Ownership: a Condition must outlive its places.
class Condition
{
public:
    enum class Wake { Signalled, Interrupted };

    /// Which place an event is meant for, as things stood when the ticket was made.
    class Ticket
    {
        friend class Condition;
        enum class Kind { Unwaited, Pending, Ended };
        Kind kind = Kind::Unwaited;
        std::uint64_t number = 0;
    };

    /// One waiter's place, taken from construction to destruction.
    class Place
    {
    public:
        explicit Place(Condition &condition);
        ~Place();
        Place(const Place &) = delete;
        Place &operator=(const Place &) = delete;

        /// Blocks until this place is signalled or interrupted; returns at once when it already was.
        Wake wait();

    private:
        Condition &m_condition;
        std::uint64_t m_number;
    };

    Condition() = default;
    Condition(const Condition &) = delete;
    Condition &operator=(const Condition &) = delete;

    /// Wakes the earliest place that is taken and not signalled yet; nothing when there is none.
    void signal();
    /// Wakes the ticket's place when it is still waiting; false, and nothing else, otherwise.
    bool signal(const Ticket &ticket);
    /// Ends the wait of every place that is taken and not signalled yet, with Wake::Interrupted.
    void interruptAll();

    /// A ticket for the place that a signal would wake now.
    [[nodiscard]] Ticket ticket();
    /// Whether the event that holds the ticket still has something to end: its place is still waiting, or
    /// nobody waited when the ticket was made and nobody does now.
    [[nodiscard]] bool accepts(const Ticket &ticket);

private:
    enum class State { Waiting, Signalled, Interrupted };
    struct Entry
    {
        std::uint64_t number;
        State state;
    };

    Entry *find(std::uint64_t number);
    Entry *firstWaiting();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Entry> m_places;
    std::uint64_t m_nextNumber = 1;
};

} // namespace platform

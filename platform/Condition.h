#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>

namespace platform {

/// Lets one thread wait until another has done its part, without losing or keeping a signal.
///
/// A waiter takes a Place first, then makes public what can lead to the signal, then waits in its place.
/// signal() wakes exactly one taken place, the one taken first of those not signalled yet, also when its
/// owner has not begun to wait; with no such place it does nothing and is not remembered. Waking up without
/// a signal does not end a wait.
///
/// ask() wakes the same place for work that its owner does between two waits; the place stays taken and
/// unsignalled, so that an event which comes meanwhile ends the next wait. A place may have a time at which
/// its wait ends by itself. What ends a place first, a signal, an interruption or that time, is decided under
/// one lock, and nothing else ends it again.
///
/// A Ticket remembers, at the moment an event happens (a button is pressed), which place that event can end.
/// signal(ticket) wakes that place or none, so that an event that comes too late for its own place cannot end
/// the next one.
///
/// Thread: any. Ownership: a Condition must outlive its places.
class Condition
{
public:
    enum class Wake {
        Signalled,
        Interrupted,
        Asked,    ///< There is work to be done; the place is as it was.
        TimedOut, ///< The place's own time has come.
    };
    using Time = std::chrono::steady_clock::time_point;

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

        /// Ends the wait at a time at the latest. Called before anybody waits in the place.
        void setLimit(Time limit);
        /// Blocks until this place is signalled, interrupted or asked, or until its time has come; returns at
        /// once when it already was. However often it was asked since the last wait, it returns once for it,
        /// and not at all when its end comes with it.
        Wake wait();
        /// Ends the place now, as an interruption does, unless it has ended already. How it has ended.
        Wake end();

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
    /// Wakes the place that a signal would wake, for work, with Wake::Asked; nothing when there is none.
    void ask();
    /// Ends the wait of every place that is taken and not signalled yet, with Wake::Interrupted.
    void interruptAll();
    /// Ends the wait of every such place whose time has come, also while its owner works and does not look at
    /// the clock. Whether there was one.
    bool endOverdue();

    /// A ticket for the place that a signal would wake now.
    [[nodiscard]] Ticket ticket();
    /// Whether the event that holds the ticket still has something to end: its place is still waiting, or
    /// nobody waited when the ticket was made and nobody does now.
    [[nodiscard]] bool accepts(const Ticket &ticket);

private:
    enum class State { Waiting, Signalled, Interrupted, TimedOut };
    struct Entry
    {
        std::uint64_t number;
        State state = State::Waiting;
        bool asked = false;
        std::optional<Time> limit = {};
        /// Requires: the place is not waiting any more.
        [[nodiscard]] Wake wake() const;
        /// Ends the place when its time has come.
        void look();
    };

    Entry *find(std::uint64_t number);
    Entry *firstWaiting();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Entry> m_places;
    std::uint64_t m_nextNumber = 1;
};

} // namespace platform

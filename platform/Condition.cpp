#include "platform/Condition.h"

#include <algorithm>
#include <utility>

namespace platform {

Condition::Place::Place(Condition &condition)
    : m_condition(condition)
{
    const std::lock_guard lock(m_condition.m_mutex);
    m_number = m_condition.m_nextNumber++;
    m_condition.m_places.push_back({m_number});
}

Condition::Place::~Place()
{
    const std::lock_guard lock(m_condition.m_mutex);
    std::erase_if(m_condition.m_places, [this](const Entry &entry) { return entry.number == m_number; });
}

Condition::Wake Condition::Entry::wake() const
{
    switch (state) {
    case State::Signalled:
        return Wake::Signalled;
    case State::TimedOut:
        return Wake::TimedOut;
    default:
        return Wake::Interrupted;
    }
}

void Condition::Entry::look()
{
    if (state == State::Waiting && limit && std::chrono::steady_clock::now() >= *limit)
        state = State::TimedOut;
}

void Condition::Place::setLimit(Time limit)
{
    const std::lock_guard lock(m_condition.m_mutex);
    m_condition.find(m_number)->limit = limit;
}

Condition::Wake Condition::Place::wait()
{
    std::unique_lock lock(m_condition.m_mutex);
    for (;;) {
        // Asks for its own entry, and anew each time: all places share one variable, waking up says nothing
        // by itself, and other places come and go meanwhile.
        Entry &own = *m_condition.find(m_number);
        // The end before the work: whoever has pressed or run out of time does not wait for it.
        own.look();
        if (own.state != State::Waiting)
            return own.wake();
        if (std::exchange(own.asked, false))
            return Wake::Asked;
        if (own.limit) {
            // A copy: the entry may move while the lock is open.
            const Time limit = *own.limit;
            m_condition.m_changed.wait_until(lock, limit);
        } else {
            m_condition.m_changed.wait(lock);
        }
    }
}

Condition::Wake Condition::Place::end()
{
    const std::lock_guard lock(m_condition.m_mutex);
    Entry &own = *m_condition.find(m_number);
    if (own.state == State::Waiting)
        own.state = State::Interrupted;
    return own.wake();
}

Condition::Entry *Condition::find(std::uint64_t number)
{
    const auto found = std::find_if(m_places.begin(), m_places.end(),
                                    [number](const Entry &entry) { return entry.number == number; });
    return found == m_places.end() ? nullptr : &*found;
}

Condition::Entry *Condition::firstWaiting()
{
    const auto found = std::find_if(m_places.begin(), m_places.end(),
                                    [](const Entry &entry) { return entry.state == State::Waiting; });
    return found == m_places.end() ? nullptr : &*found;
}

void Condition::signal()
{
    const std::lock_guard lock(m_mutex);
    if (Entry *entry = firstWaiting()) {
        entry->state = State::Signalled;
        // All share one variable: whose place it is finds out for itself.
        m_changed.notify_all();
    }
}

bool Condition::signal(const Ticket &ticket)
{
    if (ticket.kind != Ticket::Kind::Pending)
        return false;
    const std::lock_guard lock(m_mutex);
    Entry *entry = find(ticket.number);
    // The place is gone, or something else has ended its wait: an event that is late ends nothing.
    if (!entry || entry->state != State::Waiting)
        return false;
    entry->state = State::Signalled;
    m_changed.notify_all();
    return true;
}

void Condition::ask()
{
    const std::lock_guard lock(m_mutex);
    if (Entry *entry = firstWaiting()) {
        entry->asked = true;
        m_changed.notify_all();
    }
}

bool Condition::endOverdue()
{
    const std::lock_guard lock(m_mutex);
    bool any = false;
    for (Entry &entry : m_places) {
        entry.look();
        any = any || entry.state == State::TimedOut;
    }
    m_changed.notify_all();
    return any;
}

void Condition::interruptAll()
{
    const std::lock_guard lock(m_mutex);
    for (Entry &entry : m_places) {
        if (entry.state == State::Waiting)
            entry.state = State::Interrupted;
    }
    m_changed.notify_all();
}

Condition::Ticket Condition::ticket()
{
    const std::lock_guard lock(m_mutex);
    Ticket ticket;
    if (m_places.empty())
        return ticket;
    if (const Entry *entry = firstWaiting()) {
        ticket.kind = Ticket::Kind::Pending;
        ticket.number = entry->number;
    } else {
        // Places are taken, and all of them are over: the event came after the end of what it was meant for.
        ticket.kind = Ticket::Kind::Ended;
    }
    return ticket;
}

bool Condition::accepts(const Ticket &ticket)
{
    const std::lock_guard lock(m_mutex);
    if (ticket.kind == Ticket::Kind::Unwaited)
        return m_places.empty();
    if (ticket.kind == Ticket::Kind::Ended)
        return false;
    const Entry *entry = find(ticket.number);
    return entry && entry->state == State::Waiting;
}

} // namespace platform

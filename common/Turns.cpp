#include "common/Turns.h"

#include <algorithm>

namespace interactive {

Turns::Turn::Turn(Turns &turns, const QString &band, const QString &panelKey, Room room)
    : m_turns(turns)
{
    const std::lock_guard lock(m_turns.m_mutex);
    m_number = m_turns.m_nextNumber++;
    // Who comes after the host has ended all calls is refused like those that queued then.
    m_turns.m_queue.push_back({m_number, band, panelKey, room, m_turns.m_interrupted});
}

Turns::Turn::~Turn()
{
    const std::lock_guard lock(m_turns.m_mutex);
    std::erase_if(m_turns.m_queue, [this](const Entry &entry) { return entry.number == m_number; });
    // All are woken: several slot panels may have queued behind this one group panel, and each knows its own
    // turn.
    m_turns.m_changed.notify_all();
}

bool Turns::Turn::hasCome() const
{
    const std::lock_guard lock(m_turns.m_mutex);
    const Entry &entry = m_turns.find(m_number);
    return !entry.interrupted && m_turns.hasCome(entry);
}

Turns::Wake Turns::Turn::wait()
{
    std::unique_lock lock(m_turns.m_mutex);
    m_turns.m_changed.wait(lock, [this] {
        const Entry &entry = m_turns.find(m_number);
        return entry.interrupted || m_turns.hasCome(entry);
    });
    // The end of all calls comes before a turn that has come in the same moment: no new panel is to be drawn.
    return m_turns.find(m_number).interrupted ? Wake::Interrupted : Wake::Granted;
}

void Turns::interrupt()
{
    const std::lock_guard lock(m_mutex);
    m_interrupted = true;
    for (Entry &entry : m_queue)
        entry.interrupted = true;
    m_changed.notify_all();
}

qsizetype Turns::count() const
{
    const std::lock_guard lock(m_mutex);
    return static_cast<qsizetype>(m_queue.size());
}

void Turns::accept()
{
    const std::lock_guard lock(m_mutex);
    m_interrupted = false;
}

bool Turns::exclude(const Entry &a, const Entry &b)
{
    // Bands lie above one another, so that panels of different groups never cover each other.
    if (a.band != b.band)
        return false;
    // Two calls for one slot would draw into the same box, and a press could not tell whose button it was.
    return a.room == Room::Alone || b.room == Room::Alone || a.panelKey == b.panelKey;
}

const Turns::Entry &Turns::find(std::uint64_t number) const
{
    // Always there: a turn's entry stays in the queue for as long as the turn lives.
    return *std::find_if(m_queue.begin(), m_queue.end(),
                         [number](const Entry &entry) { return entry.number == number; });
}

/// Only those that came earlier count: one that came later has its turn already only where the two exclude
/// each other in nothing.
bool Turns::hasCome(const Entry &entry) const
{
    return std::none_of(m_queue.begin(), m_queue.end(), [&](const Entry &other) {
        return other.number < entry.number && exclude(other, entry);
    });
}

} // namespace interactive

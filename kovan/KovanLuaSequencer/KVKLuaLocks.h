#pragma once

#include <QByteArray>

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <vector>

/// Which sequence has which lock, and who queues for it, first come first served. Sequences are numbered.
///
/// Thread: a plain value.
class KVKLuaLocks
{
public:
    /// Takes the lock, or the last place in its queue. Returns whether the sequence has the lock now.
    /// Requires: it neither has the lock nor queues for it.
    bool enter(const QByteArray &name, std::size_t who);
    /// Gives the lock up, or the place in the queue. Returns who has got the lock by that. Nothing happens
    /// for a sequence that has neither.
    std::optional<std::size_t> leave(const QByteArray &name, std::size_t who);

    [[nodiscard]] std::optional<std::size_t> holder(const QByteArray &name) const;
    [[nodiscard]] std::vector<QByteArray> heldBy(std::size_t who) const;

private:
    struct Lock
    {
        std::size_t holder;
        std::deque<std::size_t> queue;
    };

    std::map<QByteArray, Lock> m_locks; ///< Those that somebody has.
};

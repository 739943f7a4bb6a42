#include "kovan/KovanLuaSequencer/KVKLuaLocks.h"

bool KVKLuaLocks::enter(const QByteArray &name, std::size_t who)
{
    const auto [lock, isFree] = m_locks.try_emplace(name, Lock{who, {}});
    if (!isFree)
        lock->second.queue.push_back(who);
    return isFree;
}

std::optional<std::size_t> KVKLuaLocks::leave(const QByteArray &name, std::size_t who)
{
    const auto found = m_locks.find(name);
    if (found == m_locks.end())
        return std::nullopt;
    Lock &lock = found->second;
    if (lock.holder != who) {
        std::erase(lock.queue, who);
        return std::nullopt;
    }
    if (lock.queue.empty()) {
        m_locks.erase(found);
        return std::nullopt;
    }
    lock.holder = lock.queue.front();
    lock.queue.pop_front();
    return lock.holder;
}

std::optional<std::size_t> KVKLuaLocks::holder(const QByteArray &name) const
{
    const auto found = m_locks.find(name);
    return found == m_locks.end() ? std::nullopt : std::optional(found->second.holder);
}

std::vector<QByteArray> KVKLuaLocks::heldBy(std::size_t who) const
{
    std::vector<QByteArray> names;
    for (const auto &[name, lock] : m_locks) {
        if (lock.holder == who)
            names.push_back(name);
    }
    return names;
}

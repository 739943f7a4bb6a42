#include "kovan/KovanLuaSequencer/KVKLuaMeetings.h"

#include <utility>

KVKLuaMeetings::KVKLuaMeetings(std::vector<QString> groups)
    : m_groups(std::move(groups))
{}

void KVKLuaMeetings::come(const QByteArray &name, std::size_t who)
{
    ++m_counts[name][who];
}

void KVKLuaMeetings::withdraw(const QByteArray &name, std::size_t who)
{
    --m_counts[name][who];
}

bool KVKLuaMeetings::meets(std::size_t who, std::size_t other) const
{
    return who != other && (m_groups[who].isEmpty() || m_groups[who] == m_groups[other]);
}

std::vector<std::size_t> KVKLuaMeetings::behind(const QByteArray &name, std::size_t who, bool ended) const
{
    const auto found = m_counts.find(name);
    if (found == m_counts.end())
        return {};
    const auto countOf = [&counts = found->second](std::size_t one) {
        const auto count = counts.find(one);
        return count == counts.end() ? 0 : count->second;
    };
    std::vector<std::size_t> others;
    for (std::size_t other = 0; other < m_groups.size(); ++other) {
        if (meets(who, other) && m_ended.contains(other) == ended && countOf(other) < countOf(who))
            others.push_back(other);
    }
    return others;
}

std::vector<std::size_t> KVKLuaMeetings::missing(const QByteArray &name, std::size_t who) const
{
    return behind(name, who, false);
}

std::vector<std::size_t> KVKLuaMeetings::newlyAbsent(const QByteArray &name, std::size_t who)
{
    std::vector<std::size_t> absent;
    for (const std::size_t other : behind(name, who, true)) {
        if (m_told[name].insert(other).second)
            absent.push_back(other);
    }
    return absent;
}

#include "kovan/KovanLuaSequencer/KVKLuaSharedTable.h"

#include <utility>

namespace {

std::size_t sizeOf(const KVKLuaSharedKey &key, const KVKLuaSharedTable::Value &value)
{
    const QByteArray *text = std::get_if<QByteArray>(&key);
    return value ? value->size() + (text ? static_cast<std::size_t>(text->size()) : 0) : 0;
}

} // namespace

KVKLuaSharedTable::Value KVKLuaSharedTable::read(const KVKLuaSharedKey &key) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_entries.find(key);
    return found == m_entries.end() ? nullptr : found->second;
}

/// Returns the former value, for the caller to let go when the lock is released: a large one takes its time.
KVKLuaSharedTable::Value KVKLuaSharedTable::put(const KVKLuaSharedKey &key, const Value &value)
{
    const auto found = m_entries.find(key);
    const Value former = found == m_entries.end() ? nullptr : found->second;
    const std::size_t size = m_size - sizeOf(key, former) + sizeOf(key, value);
    // What makes it smaller is taken in any case.
    if (size > MostMemory && size > m_size) {
        throw KVKLuaSharedTableError(
            QStringLiteral("%1: there is no room for it; all shared values together may "
                           "take %2 MiB")
                .arg(KVKTextOfSharedKey(key))
                .arg(MostMemory / 1024 / 1024));
    }
    if (value)
        m_entries.insert_or_assign(key, value);
    else if (former)
        m_entries.erase(found);
    m_size = size;
    return former;
}

void KVKLuaSharedTable::write(const KVKLuaSharedKey &key, const Value &value, std::size_t who)
{
    Value former;
    const std::lock_guard lock(m_mutex);
    former = put(key, value);
    const auto update = m_updates.find(key);
    if (update != m_updates.end() && update->second.who != who)
        update->second.isOvertaken = true;
}

KVKLuaSharedTable::Entries KVKLuaSharedTable::all() const
{
    const std::lock_guard lock(m_mutex);
    return m_entries;
}

qint64 KVKLuaSharedTable::length() const
{
    const std::lock_guard lock(m_mutex);
    qint64 length = 0;
    for (auto entry = m_entries.lower_bound(qint64{1});
         entry != m_entries.end() && entry->first == KVKLuaSharedKey(length + 1); ++entry)
        ++length;
    return length;
}

KVKLuaSharedTable::Value KVKLuaSharedTable::beginUpdate(const KVKLuaSharedKey &key, std::size_t who)
{
    const std::lock_guard lock(m_mutex);
    m_updates.insert_or_assign(key, Update{who});
    const auto found = m_entries.find(key);
    return found == m_entries.end() ? nullptr : found->second;
}

void KVKLuaSharedTable::endUpdate(const KVKLuaSharedKey &key, const Value &value)
{
    Value former;
    const std::lock_guard lock(m_mutex);
    const auto update = m_updates.find(key);
    if (update == m_updates.end())
        return;
    if (!update->second.isOvertaken)
        former = put(key, value);
    m_updates.erase(update);
}

void KVKLuaSharedTable::dropUpdate(const KVKLuaSharedKey &key)
{
    const std::lock_guard lock(m_mutex);
    m_updates.erase(key);
}

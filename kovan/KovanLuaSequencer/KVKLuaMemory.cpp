#include "kovan/KovanLuaSequencer/KVKLuaMemory.h"

#include <lua.hpp>

#include <algorithm>
#include <cstdlib>
#include <cstring>

/// For a new block, `size` tells its kind and not a size.
void *KVKLuaMemory::allocate(void *data, void *block, std::size_t size, std::size_t wanted) noexcept
{
    auto &memory = *static_cast<KVKLuaMemory *>(data);
    const std::size_t had = block ? size : 0;
    if (wanted > 0)
        return memory.grow(block, had, wanted);
    std::free(block);
    memory.m_held -= had;
    return nullptr;
}

void *KVKLuaMemory::grow(void *block, std::size_t had, std::size_t wanted) noexcept
{
    const bool isTooMuch = wanted > had && wanted - had > m_most - std::min(m_most, m_held);
    void *fresh = isTooMuch ? nullptr : std::realloc(block, wanted);
    if (fresh)
        m_held += wanted - had;
    else
        notePlace();
    return fresh;
}

/// Lua's error for want of memory has no place, and by the time that it is caught the calls are gone. The
/// calls are whole whenever memory is asked for: Lua's collector goes through them then.
void KVKLuaMemory::notePlace() noexcept
{
    if (!m_state)
        return;
    lua_Debug call = {};
    for (int level = 0; lua_getstack(m_state, level, &call) == 1; ++level) {
        if (lua_getinfo(m_state, "Sl", &call) == 0 || call.currentline <= 0)
            continue;
        const std::size_t length = std::min(std::strlen(call.short_src), m_source.size() - 1);
        std::copy_n(call.short_src, length, m_source.begin());
        m_source.at(length) = '\0';
        m_line = call.currentline;
        return;
    }
}

QString KVKLuaMemory::lastRefusal() const
{
    if (m_line == 0)
        return {};
    return QStringLiteral("%1:%2: ").arg(QString::fromUtf8(m_source.data()), QString::number(m_line));
}

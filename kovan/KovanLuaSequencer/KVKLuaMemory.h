#pragma once

#include <QString>

#include <array>
#include <cstddef>

struct lua_State;

/// The memory that one state holds, and no more than its script may have. Private to the sequencer.
///
/// Thread: the state's. Ownership: outlives the state, which knows its address.
class KVKLuaMemory
{
public:
    explicit KVKLuaMemory(std::size_t most)
        : m_most(most)
    {}
    KVKLuaMemory(const KVKLuaMemory &) = delete;
    KVKLuaMemory &operator=(const KVKLuaMemory &) = delete;

    /// The allocator for lua_newstate, whose data is a KVKLuaMemory.
    static void *allocate(void *data, void *block, std::size_t size, std::size_t wanted) noexcept;

    /// From now on it is noted where the script of the state stands when it is refused memory.
    void watch(lua_State *state) { m_state = state; }
    /// Where the script has last been refused memory: "script.lua:3: ". Empty where it never was, or where
    /// none of its lines was at work. A coroutine's place is the line that has resumed it.
    [[nodiscard]] QString lastRefusal() const;

private:
    [[nodiscard]] void *grow(void *block, std::size_t had, std::size_t wanted) noexcept;
    void notePlace() noexcept;

    std::size_t m_most;
    std::size_t m_held = 0;
    lua_State *m_state = nullptr;
    /// Plain memory of a known size: there may be no other.
    std::array<char, 128> m_source{};
    int m_line = 0;
};

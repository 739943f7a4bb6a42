#pragma once

struct lua_State;
struct KVKLuaLimits;

/// What KVKLuaOpenLibraries needs to know. The texts must outlive the state.
struct KVKLuaLibrarySettings
{
    const char *reader; ///< Who is refused: "a sequence".
    const char *folder; ///< Where the script lies; `require` looks there first.
    const KVKLuaLimits &limits;
};

/// Gives a state Lua's libraries, without what would wait for a person at a terminal or change something for
/// all of the process, and of what reaches out of the script only what its limits allow. Private to the
/// sequencer.
///
/// Thread: the state's. Errors: raises Lua errors; called in a protected call.
void KVKLuaOpenLibraries(lua_State *state, const KVKLuaLibrarySettings &settings);

/// Whether the value at an index is a function that raises an error for every script; for a script that gives
/// it no argument. Raises nothing.
[[nodiscard]] bool KVKLuaIsRefused(lua_State *state, int index);
[[nodiscard]] bool KVKLuaIsRefusedWithoutArguments(lua_State *state, int index);
/// The allowance that a refused function waits for; null where none would help. The text is the state's.
[[nodiscard]] const char *KVKLuaAllowanceOf(lua_State *state, int index);

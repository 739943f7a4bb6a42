#pragma once

struct lua_State;

/// What KVKLuaOpenLibraries needs to know. The texts must outlive the state.
struct KVKLuaLibrarySettings
{
    const char *reader; ///< Who is refused: "a sequence".
    const char *folder; ///< Where the script lies; `require` looks there first.
};

/// Gives a state Lua's libraries, without what would end the station, wait for a person at a terminal, or
/// change something for all of the process. Private to the sequencer.
///
/// Thread: the state's. Errors: raises Lua errors; called in a protected call.
void KVKLuaOpenLibraries(lua_State *state, const KVKLuaLibrarySettings &settings);

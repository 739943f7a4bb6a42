#pragma once

struct lua_State;

/// Gives a state `shared`, the table of values that all sequences of a run see. Private to the sequencer.
///
/// It is a userdata: what would pass by its metatable, and be seen by this sequence alone (rawset, next), is
/// an error. Requires: the state of a KVKLuaScope that has a place in a run; KVKLuaPrepareHolds. Thread: the
/// state's. Errors: raises Lua errors; called in a protected call.
void KVKLuaBindShared(lua_State *state);

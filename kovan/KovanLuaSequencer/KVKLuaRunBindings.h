#pragma once

struct lua_State;

/// Gives a state `rendezvous` and `locked`, the functions with which a sequence waits for others of its run.
/// Private to the sequencer.
///
/// Requires: the state of a KVKLuaScope that has a place in a run; KVKLuaPrepareHolds. Thread: the state's.
/// Errors: raises Lua errors; called in a protected call.
void KVKLuaBindRun(lua_State *state);

#pragma once

struct lua_State;

/// Lets a script that is stopped end in spite of its error handlers: the stop is raised where no further one
/// could interrupt a handler of xpcall, which is therefore not called for it. Private to the sequencer.
///
/// Thread: the state's. Requires: the state of a KVKLuaRunner, with Lua's libraries. Errors: raises Lua
/// errors; called in a protected call.
void KVKLuaGuardErrorHandlers(lua_State *state);

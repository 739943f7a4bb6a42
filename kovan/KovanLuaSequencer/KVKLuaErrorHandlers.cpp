#include "kovan/KovanLuaSequencer/KVKLuaErrorHandlers.h"

#include "kovan/KovanLuaSequencer/KVKLuaRunner.h"

#include <lua.hpp>

// Everything here may raise a Lua error, and therefore makes no C++ objects.

namespace {

constexpr int Function = 1;
constexpr int Handler = 2;

/// Upvalue: the script's handler.
int handleUnlessStopped(lua_State *state)
{
    lua_settop(state, 1);
    if (KVKLuaRunner::of(state).isStopped())
        return 1;
    lua_pushvalue(state, lua_upvalueindex(1));
    lua_insert(state, 1);
    lua_call(state, 1, 1);
    return 1;
}

/// What the protected call has left: above `below` values the results, or an error as the last value.
int finishXpcall(lua_State *state, int status, lua_KContext below)
{
    if (status == LUA_OK || status == LUA_YIELD)
        return lua_gettop(state) - static_cast<int>(below);
    lua_pushboolean(state, 0);
    lua_insert(state, -2);
    return 2;
}

/// xpcall, the function of which can yield as ever.
int xpcall(lua_State *state)
{
    const int arguments = lua_gettop(state) - Handler;
    luaL_checktype(state, Handler, LUA_TFUNCTION);
    // A C function computes nothing without end; debug.traceback tells the calls from its own place on.
    if (!lua_iscfunction(state, Handler)) {
        lua_pushvalue(state, Handler);
        lua_pushcclosure(state, handleUnlessStopped, 1);
        lua_replace(state, Handler);
    }
    lua_pushboolean(state, 1);
    lua_pushvalue(state, Function);
    // The first result and the function, below the arguments.
    lua_rotate(state, Handler + 1, 2);
    const int status = lua_pcallk(state, arguments, LUA_MULTRET, Handler, Handler, finishXpcall);
    return finishXpcall(state, status, Handler);
}

} // namespace

void KVKLuaGuardErrorHandlers(lua_State *state)
{
    lua_register(state, "xpcall", xpcall);
}

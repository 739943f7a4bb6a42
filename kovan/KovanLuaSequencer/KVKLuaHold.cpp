#include "kovan/KovanLuaSequencer/KVKLuaHold.h"

#include "kovan/KovanLuaSequencer/KVKLuaBindings.h"

#include <lua.hpp>

#include <new>

// Everything here may raise a Lua error, and therefore makes no C++ objects that have a destructor.

namespace {

constexpr char HoldType[] = "KVKLuaHold";

int closeHold(lua_State *state)
{
    KVKLuaGiveUp(state, static_cast<KVKLuaHold *>(lua_touserdata(state, 1)));
    return 0;
}

bool isCoroutine(lua_State *state)
{
    const bool isMain = lua_pushthread(state) == 1;
    lua_pop(state, 1);
    return !isMain;
}

} // namespace

void KVKLuaPrepareHolds(lua_State *state)
{
    luaL_newmetatable(state, HoldType);
    lua_pushcfunction(state, closeHold);
    lua_setfield(state, -2, "__close");
    lua_pop(state, 1);
}

KVKLuaHold *KVKLuaInsertHold(lua_State *state, int place, int name, KVKLuaHold::GiveUp giveUp)
{
    void *block = lua_newuserdatauv(state, sizeof(KVKLuaHold), 1);
    auto *hold = new (block) KVKLuaHold{giveUp, false, nullptr, 0, 0};
    if (lua_type(state, name) == LUA_TSTRING)
        hold->text = lua_tolstring(state, name, &hold->length);
    else
        hold->number = lua_tointeger(state, name);
    // The text stays for as long as the hold does.
    lua_pushvalue(state, name);
    lua_setiuservalue(state, -2, 1);
    luaL_setmetatable(state, HoldType);
    lua_insert(state, place);
    // As a variable to be closed it is given up when the error that passes has been looked at where it was
    // raised: a traceback made by a handler further out is whole. A coroutine that dies of an error does not
    // close its variables.
    if (!isCoroutine(state))
        lua_toclose(state, place);
    return hold;
}

void KVKLuaCallHolding(lua_State *state, int place, int results)
{
    const int arguments = lua_gettop(state) - place - 1;
    if (!isCoroutine(state)) {
        lua_call(state, arguments, results);
        return;
    }
    const int status = lua_pcall(state, arguments, results, 0);
    if (status == LUA_OK)
        return;
    KVKLuaGiveUp(state, static_cast<KVKLuaHold *>(lua_touserdata(state, place)));
    lua_error(state);
}

void KVKLuaGiveUp(lua_State *state, KVKLuaHold *hold)
{
    if (!hold->isHeld)
        return;
    hold->isHeld = false;
    hold->giveUp(KVKLuaScope::of(state), *hold);
}

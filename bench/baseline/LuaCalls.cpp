#include "bench/baseline/LuaCalls.h"

#include <lua.hpp>

#include <memory>
#include <thread>

namespace baseline {

namespace {

int giveTable(lua_State *state)
{
    auto *calls = static_cast<int *>(lua_touserdata(state, lua_upvalueindex(1)));
    ++*calls;
    lua_createtable(state, 0, 2);
    lua_pushinteger(state, 0);
    lua_setfield(state, -2, "loopCount");
    lua_pushboolean(state, 0);
    lua_setfield(state, -2, "isLoopEnabled");
    return 1;
}

void run(int times, int &calls)
{
    const std::unique_ptr<lua_State, void (*)(lua_State *)> state(luaL_newstate(), lua_close);
    luaL_openlibs(state.get());
    lua_pushlightuserdata(state.get(), &calls);
    lua_pushcclosure(state.get(), giveTable, 1);
    lua_setglobal(state.get(), "give");
    lua_pushinteger(state.get(), times);
    lua_setglobal(state.get(), "times");
    luaL_dostring(state.get(), "for i = 1, times do give() end");
}

} // namespace

int callFromLua(int times)
{
    int calls = 0;
    std::jthread(run, times, std::ref(calls)).join();
    return calls;
}

} // namespace baseline

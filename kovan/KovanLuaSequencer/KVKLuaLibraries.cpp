#include "kovan/KovanLuaSequencer/KVKLuaLibraries.h"

#include <lua.hpp>

#include <cstdio>

// Everything here may raise a Lua error, and therefore makes no C++ objects.

namespace {

constexpr char RefusedFormat[] = "%s is not available to %s";

/// Upvalues: the function's name, and who asks for it.
int refusedFunction(lua_State *state)
{
    return luaL_error(state, RefusedFormat, lua_tostring(state, lua_upvalueindex(1)),
                      lua_tostring(state, lua_upvalueindex(2)));
}

/// Replaces a function of a library by one that refuses.
void refuse(lua_State *state, const char *library, const char *function, const char *reader)
{
    lua_getglobal(state, library);
    lua_pushfstring(state, "%s.%s", library, function);
    lua_pushstring(state, reader);
    lua_pushcclosure(state, refusedFunction, 2);
    lua_setfield(state, -2, function);
    lua_pop(state, 1);
}

/// Calls the function that an upvalue keeps, in its place: an error gets the line of the script, which the
/// library looks for one call too near.
int callOriginal(lua_State *state, int original)
{
    lua_pushvalue(state, lua_upvalueindex(original));
    lua_insert(state, 1);
    if (lua_pcall(state, lua_gettop(state) - 1, LUA_MULTRET, 0) == LUA_OK)
        return lua_gettop(state);
    if (lua_type(state, -1) == LUA_TSTRING) {
        luaL_where(state, 1);
        lua_insert(state, -2);
        lua_concat(state, 2);
    }
    return lua_error(state);
}

/// Upvalues: name, who asks, and io.lines itself. Without a file it would read the terminal.
int linesOfAFile(lua_State *state)
{
    return lua_isnoneornil(state, 1) ? refusedFunction(state) : callOriginal(state, 3);
}

/// Upvalues: name, who asks, and the method itself. Whatever way the file was come by: io.stdin, io.input(),
/// the metatable of another file.
int methodOfAnyOtherFile(lua_State *state)
{
    const auto *file = static_cast<luaL_Stream *>(luaL_testudata(state, 1, LUA_FILEHANDLE));
    return file && file->f == stdin ? refusedFunction(state) : callOriginal(state, 3);
}

/// Replaces a function of the table on the top by another one that keeps it.
void wrap(lua_State *state, const char *function, const char *name, const char *reader, lua_CFunction wrapper)
{
    lua_pushstring(state, name);
    lua_pushstring(state, reader);
    lua_getfield(state, -3, function);
    lua_pushcclosure(state, wrapper, 3);
    lua_setfield(state, -2, function);
}

void keepFromTerminal(lua_State *state, const char *reader)
{
    refuse(state, "io", "read", reader);
    lua_getglobal(state, "io");
    wrap(state, "lines", "io.lines", reader, linesOfAFile);
    luaL_getmetatable(state, LUA_FILEHANDLE);
    lua_getfield(state, -1, "__index");
    wrap(state, "read", "io.stdin:read", reader, methodOfAnyOtherFile);
    wrap(state, "lines", "io.stdin:lines", reader, methodOfAnyOtherFile);
    lua_pop(state, 3);
}

/// Looks for a module beside the script. Not through package.path, where ";" and "?" in a folder's name mean
/// something else. Upvalue: the folder.
int searchBesideScript(lua_State *state)
{
    const char *folder = lua_tostring(state, lua_upvalueindex(1));
    const char *part = luaL_gsub(state, luaL_checkstring(state, 1), ".", "/");
    const char *path = lua_pushfstring(state, "%s/%s.lua", folder, part);
    std::FILE *file = std::fopen(path, "r");
    if (!file) {
        lua_pushfstring(state, "no file '%s'", path);
        return 1;
    }
    static_cast<void>(std::fclose(file));
    if (luaL_loadfilex(state, path, "t") != LUA_OK) {
        return luaL_error(state, "error loading module '%s' from file '%s':\n\t%s", lua_tostring(state, 1),
                          path, lua_tostring(state, -1));
    }
    lua_pushstring(state, path);
    return 2;
}

/// Before all others but the one for modules that are there already.
void findModulesBeside(lua_State *state, const char *folder)
{
    lua_getglobal(state, "package");
    lua_getfield(state, -1, "searchers");
    for (auto place = static_cast<lua_Integer>(lua_rawlen(state, -1)); place >= 2; --place) {
        lua_rawgeti(state, -1, place);
        lua_rawseti(state, -2, place + 1);
    }
    lua_pushstring(state, folder);
    lua_pushcclosure(state, searchBesideScript, 1);
    lua_rawseti(state, -2, 2);
    lua_pop(state, 2);
}

} // namespace

void KVKLuaOpenLibraries(lua_State *state, const KVKLuaLibrarySettings &settings)
{
    luaL_openlibs(state);
    refuse(state, "os", "exit", settings.reader);
    // The locale is the process's: another thread would read and write its numbers with a comma.
    refuse(state, "os", "setlocale", settings.reader);
    refuse(state, "debug", "debug", settings.reader);
    // The hook is what ends a script that computes for ever.
    refuse(state, "debug", "sethook", settings.reader);
    keepFromTerminal(state, settings.reader);
    findModulesBeside(state, settings.folder);
}

bool KVKLuaIsRefused(lua_State *state, int index)
{
    return lua_tocfunction(state, index) == refusedFunction;
}

bool KVKLuaIsRefusedWithoutArguments(lua_State *state, int index)
{
    return lua_tocfunction(state, index) == linesOfAFile;
}

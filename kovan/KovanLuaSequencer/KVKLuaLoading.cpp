#include "kovan/KovanLuaSequencer/KVKLuaLoading.h"

#include "kovan/KovanLuaSequencer/KVKLuaLibraries.h"
#include "kovan/KovanLuaSequencer/KVKLuaLimits.h"

#include <lua.hpp>

#include <cstdio>
#include <cstring>

// Everything here may raise a Lua error, and therefore makes no C++ objects.

namespace {

constexpr char TextAlone[] = "t";
constexpr char BytecodeRefused[] = "%s: bytecode is not loaded, only Lua as text";

/// Lua's own text for bytecode names neither file nor chunk.
void nameBytecode(lua_State *state, const char *chunk)
{
    static constexpr char Own[] = "attempt to load a binary chunk";
    const char *message = lua_type(state, -1) == LUA_TSTRING ? lua_tostring(state, -1) : nullptr;
    if (!message || std::strncmp(message, Own, sizeof Own - 1) != 0)
        return;
    // The first character tells the kind of the name.
    const bool isNamed = *chunk == '@' || *chunk == '=';
    lua_pushfstring(state, BytecodeRefused, isNamed ? chunk + 1 : chunk);
    lua_remove(state, -2);
}

int loadFile(lua_State *state, const char *path)
{
    const int status = luaL_loadfilex(state, path, TextAlone);
    if (status != LUA_OK)
        nameBytecode(state, path);
    return status;
}

/// The first argument, a file's name. Upvalues: the function's name, and who asks for it.
const char *fileToRead(lua_State *state)
{
    if (!lua_isnoneornil(state, 1))
        return luaL_checkstring(state, 1);
    luaL_error(state, "%s without a file is not available to %s", lua_tostring(state, lua_upvalueindex(1)),
               lua_tostring(state, lua_upvalueindex(2)));
    return nullptr;
}

/// Nil and the text on the top, as load and loadfile tell of what they do not load.
int notLoaded(lua_State *state)
{
    luaL_pushfail(state);
    lua_insert(state, -2);
    return 2;
}

bool takesText(const char *mode)
{
    return std::strchr(mode, 't') != nullptr;
}

int loadfileAsText(lua_State *state)
{
    const char *path = fileToRead(state);
    const bool hasEnvironment = !lua_isnone(state, 3);
    if (!takesText(luaL_optstring(state, 2, TextAlone))) {
        lua_pushfstring(state, BytecodeRefused, path);
        return notLoaded(state);
    }
    if (loadFile(state, path) != LUA_OK)
        return notLoaded(state);
    if (hasEnvironment) {
        lua_pushvalue(state, 3);
        // A chunk's first upvalue is what it finds its globals in.
        if (!lua_setupvalue(state, -2, 1))
            lua_pop(state, 1);
    }
    return 1;
}

int allBut(lua_State *state, int, lua_KContext below)
{
    return lua_gettop(state) - static_cast<int>(below);
}

int dofileAsText(lua_State *state)
{
    const char *path = fileToRead(state);
    lua_settop(state, 1);
    if (loadFile(state, path) != LUA_OK)
        return lua_error(state);
    lua_callk(state, 0, LUA_MULTRET, 1, allBut);
    return allBut(state, LUA_OK, 1);
}

/// Upvalue: load itself.
int loadAsText(lua_State *state)
{
    constexpr int Mode = 3;
    if (lua_type(state, 1) != LUA_TSTRING)
        luaL_checktype(state, 1, LUA_TFUNCTION);
    // A text has itself for a name, which bytecode is none.
    const char *chunk = luaL_optstring(state, 2, "=load");
    if (!takesText(luaL_optstring(state, Mode, TextAlone))) {
        lua_pushfstring(state, BytecodeRefused, *chunk == '=' || *chunk == '@' ? chunk + 1 : chunk);
        return notLoaded(state);
    }
    // Whether there is an environment behind it, nil included, goes by the number of arguments.
    if (lua_gettop(state) < Mode)
        lua_settop(state, Mode);
    lua_pushstring(state, TextAlone);
    lua_replace(state, Mode);
    lua_pushvalue(state, 2);
    lua_pushvalue(state, lua_upvalueindex(1));
    lua_rotate(state, 1, 2);
    lua_call(state, lua_gettop(state) - 2, LUA_MULTRET);
    nameBytecode(state, luaL_optstring(state, 1, "=load"));
    return lua_gettop(state) - 1;
}

/// What a searcher returns for a file that it has found.
int loadModule(lua_State *state, const char *path)
{
    if (loadFile(state, path) != LUA_OK) {
        return luaL_error(state, "error loading module '%s' from file '%s':\n\t%s", lua_tostring(state, 1),
                          path, lua_tostring(state, -1));
    }
    lua_pushstring(state, path);
    return 2;
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
    return loadModule(state, path);
}

/// Puts the file of the module that is the first argument onto the stack, or nil and why there is none.
/// Upvalues: package, and package.searchpath.
const char *findOnPath(lua_State *state, const char *path)
{
    lua_pushvalue(state, lua_upvalueindex(2));
    lua_pushvalue(state, 1);
    if (lua_getfield(state, lua_upvalueindex(1), path) != LUA_TSTRING)
        luaL_error(state, "'package.%s' must be a string", path);
    lua_call(state, 2, 2);
    return lua_tostring(state, -2);
}

int searchOnPath(lua_State *state)
{
    luaL_checkstring(state, 1);
    if (const char *path = findOnPath(state, "path"))
        return loadModule(state, path);
    return 1;
}

/// Says what would be needed for a module that is there. Upvalue 3: who asks.
int refuseModuleInC(lua_State *state)
{
    luaL_checkstring(state, 1);
    const char *path = findOnPath(state, "cpath");
    if (!path)
        return 1;
    lua_pushfstring(state, "no module in C ('%s'): package.loadlib is not available to %s", path,
                    lua_tostring(state, lua_upvalueindex(3)));
    lua_pushfstring(state, KVKLuaAdvice, "package.loadlib");
    lua_concat(state, 2);
    return 1;
}

/// Puts a searcher at a place of the list, which lies on the top above package.
void putSearcher(lua_State *state, lua_Integer place, lua_CFunction search, const char *reader)
{
    lua_pushvalue(state, -2);
    lua_getfield(state, -1, "searchpath");
    lua_pushstring(state, reader);
    lua_pushcclosure(state, search, 3);
    lua_rawseti(state, -2, place);
}

/// Lua's own are for modules that are there already, for Lua, for C, and for several in one file of C.
void searchForText(lua_State *state, const KVKLuaLibrarySettings &settings)
{
    constexpr lua_Integer Beside = 2;
    constexpr lua_Integer OnPath = 3;
    constexpr lua_Integer InC = 4;
    constexpr lua_Integer SeveralInC = 5;
    const bool hasModulesInC = settings.limits.allows("package.loadlib");
    lua_getglobal(state, "package");
    lua_getfield(state, -1, "searchers");
    lua_rawgeti(state, -1, 4);
    lua_rawgeti(state, -2, 3);
    lua_rawseti(state, -3, InC);
    lua_rawseti(state, -2, SeveralInC);
    lua_pushstring(state, settings.folder);
    lua_pushcclosure(state, searchBesideScript, 1);
    lua_rawseti(state, -2, Beside);
    putSearcher(state, OnPath, searchOnPath, settings.reader);
    if (!hasModulesInC) {
        putSearcher(state, InC, refuseModuleInC, settings.reader);
        lua_pushnil(state);
        lua_rawseti(state, -2, SeveralInC);
    }
    lua_pop(state, 2);
}

void putFileFunction(lua_State *state, const char *name, lua_CFunction function, const char *reader)
{
    lua_pushstring(state, name);
    lua_pushstring(state, reader);
    lua_pushcclosure(state, function, 2);
    lua_setglobal(state, name);
}

} // namespace

void KVKLuaLoadTextOnly(lua_State *state, const KVKLuaLibrarySettings &settings)
{
    lua_getglobal(state, "load");
    lua_pushcclosure(state, loadAsText, 1);
    lua_setglobal(state, "load");
    putFileFunction(state, "loadfile", loadfileAsText, settings.reader);
    putFileFunction(state, "dofile", dofileAsText, settings.reader);
    searchForText(state, settings);
}

int KVKLuaLoadText(lua_State *state, const char *text, std::size_t length, const char *chunk)
{
    const int status = luaL_loadbufferx(state, text, length, chunk, TextAlone);
    if (status != LUA_OK)
        nameBytecode(state, chunk);
    return status;
}

bool KVKLuaReadsNamedFile(lua_State *state, int index)
{
    const lua_CFunction function = lua_tocfunction(state, index);
    return function == loadfileAsText || function == dofileAsText;
}

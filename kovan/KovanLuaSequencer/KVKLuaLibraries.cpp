#include "kovan/KovanLuaSequencer/KVKLuaLibraries.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanLuaSequencer/KVKLuaErrorHandlers.h"
#include "kovan/KovanLuaSequencer/KVKLuaLimits.h"
#include "kovan/KovanLuaSequencer/KVKLuaLoading.h"
#include "kovan/KovanLuaSequencer/KVKLuaRunner.h"

#include <lua.hpp>

#include <cstdio>
#include <cstdlib>
#include <cstring>

// Everything here may raise a Lua error, and therefore makes no C++ objects.

namespace {

constexpr char RefusedFormat[] = "%s is not available to %s%s";

/// Upvalues: the function's name, and who asks for it.
int refusedFunction(lua_State *state)
{
    return luaL_error(state, RefusedFormat, lua_tostring(state, lua_upvalueindex(1)),
                      lua_tostring(state, lua_upvalueindex(2)), "");
}

/// The same for what could be allowed. Upvalue 3: the allowance.
int refusedUnlessAllowed(lua_State *state)
{
    const char *advice = lua_pushfstring(state, KVKLuaAdvice, lua_tostring(state, lua_upvalueindex(3)));
    return luaL_error(state, RefusedFormat, lua_tostring(state, lua_upvalueindex(1)),
                      lua_tostring(state, lua_upvalueindex(2)), advice);
}

/// Replaces a function of a library by one that refuses; null where no allowance would help.
void refuse(lua_State *state, const char *library, const char *function, const char *reader,
            const char *allowance = nullptr)
{
    lua_getglobal(state, library);
    lua_pushfstring(state, "%s.%s", library, function);
    lua_pushstring(state, reader);
    lua_pushstring(state, allowance);
    lua_pushcclosure(state, allowance ? refusedUnlessAllowed : refusedFunction, 3);
    lua_setfield(state, -2, function);
    lua_pop(state, 1);
}

/// Calls the function that an upvalue keeps, in its place: an error gets the line of the script, which the
/// library looks for one call too near. It may have taken its time: whether the script is stopped is looked
/// at.
int callOriginal(lua_State *state, int original)
{
    lua_pushvalue(state, lua_upvalueindex(original));
    lua_insert(state, 1);
    const int status = lua_pcall(state, lua_gettop(state) - 1, LUA_MULTRET, 0);
    KVKLuaRunner::look(state);
    if (status == LUA_OK)
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

/// Upvalues: name, who asks, and a function that waits for another program. A script that calls it over and
/// over would need a thousand instructions to be looked at.
int callThatMayWait(lua_State *state)
{
    // Here, where the function has a name. os.execute alone does without an argument.
    if (!lua_isnoneornil(state, 1) ||
        std::strcmp(lua_tostring(state, lua_upvalueindex(1)), "os.execute") != 0)
        luaL_checkstring(state, 1);
    return callOriginal(state, 3);
}

/// The same for a method of a file.
int methodThatMayWait(lua_State *state)
{
    luaL_checkudata(state, 1, LUA_FILEHANDLE);
    return callOriginal(state, 3);
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
    wrap(state, "close", "file:close", reader, methodThatMayWait);
    lua_pop(state, 3);
}

/// Ends the process at once: other threads use what an orderly end would take away.
int exitAtOnce(lua_State *state)
{
    int status = EXIT_SUCCESS;
    if (lua_isboolean(state, 1))
        status = lua_toboolean(state, 1) ? EXIT_SUCCESS : EXIT_FAILURE;
    else
        status = static_cast<int>(luaL_optinteger(state, 1, EXIT_SUCCESS));
    std::fflush(stdout);
    static_cast<void>(KVKLogGetProxy()->flush(KVKLogProxy::EndLimit));
    std::_Exit(status);
}

/// Leaves debug.traceback alone, which only looks.
void closeDebug(lua_State *state, const char *reader)
{
    lua_getglobal(state, "debug");
    lua_pushnil(state);
    while (lua_next(state, -2) != 0) {
        lua_pop(state, 1);
        const char *name = lua_tostring(state, -1);
        if (std::strcmp(name, "traceback") != 0)
            refuse(state, "debug", name, reader, "debug");
    }
    lua_pop(state, 1);
}

/// What reaches out of the script: to other programs, to the process, to C.
void closeWhatIsNotAllowed(lua_State *state, const KVKLuaLibrarySettings &settings)
{
    const auto closeUnlessAllowed = [&](const char *library, const char *function, const char *name) {
        if (!settings.limits.allows(name))
            refuse(state, library, function, settings.reader, name);
    };
    lua_getglobal(state, "os");
    lua_pushcfunction(state, exitAtOnce);
    lua_setfield(state, -2, "exit");
    lua_pop(state, 1);
    closeUnlessAllowed("os", "execute", "os.execute");
    closeUnlessAllowed("io", "popen", "io.popen");
    closeUnlessAllowed("os", "exit", "os.exit");
    closeUnlessAllowed("package", "loadlib", "package.loadlib");
    if (!settings.limits.allows("debug"))
        closeDebug(state, settings.reader);
}

} // namespace

void KVKLuaOpenLibraries(lua_State *state, const KVKLuaLibrarySettings &settings)
{
    luaL_openlibs(state);
    lua_getglobal(state, "os");
    wrap(state, "execute", "os.execute", settings.reader, callThatMayWait);
    lua_getglobal(state, "io");
    wrap(state, "open", "io.open", settings.reader, callThatMayWait);
    wrap(state, "popen", "io.popen", settings.reader, callThatMayWait);
    lua_pop(state, 2);
    closeWhatIsNotAllowed(state, settings);
    // The locale is the process's: another thread would read and write its numbers with a comma.
    refuse(state, "os", "setlocale", settings.reader);
    refuse(state, "debug", "debug", settings.reader);
    // The hook is what ends a script that computes for ever.
    refuse(state, "debug", "sethook", settings.reader);
    keepFromTerminal(state, settings.reader);
    KVKLuaLoadTextOnly(state, settings);
    KVKLuaGuardErrorHandlers(state);
}

bool KVKLuaIsRefused(lua_State *state, int index)
{
    const lua_CFunction function = lua_tocfunction(state, index);
    return function == refusedFunction || function == refusedUnlessAllowed;
}

const char *KVKLuaAllowanceOf(lua_State *state, int index)
{
    if (lua_tocfunction(state, index) != refusedUnlessAllowed)
        return nullptr;
    lua_getupvalue(state, index, 3);
    const char *allowance = lua_tostring(state, -1);
    lua_pop(state, 1);
    return allowance;
}

bool KVKLuaIsRefusedWithoutArguments(lua_State *state, int index)
{
    return lua_tocfunction(state, index) == linesOfAFile || KVKLuaReadsNamedFile(state, index);
}

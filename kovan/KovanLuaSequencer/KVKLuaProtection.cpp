#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"

#include "kovan/KovanLuaSequencer/KVKLuaRunner.h"
#include "kovan/KovanLuaSequencer/KVKLuaValue.h"

#include <lua.hpp>

namespace {

constexpr int Failed = -1;
constexpr int FailedWithoutText = -2;
/// More than this of an error text helps nobody, and a script can make one of any length.
constexpr std::size_t LongestErrorText = 4096;

int tostringOfArgument(lua_State *state)
{
    luaL_tolstring(state, 1, nullptr);
    return 1;
}

/// The text on the top of the stack. Requires: it is one.
QString textOnTop(lua_State *state)
{
    std::size_t length = 0;
    const char *bytes = lua_tolstring(state, -1, &length);
    if (length <= LongestErrorText)
        return QString::fromUtf8(bytes, static_cast<qsizetype>(length));
    return QString::fromUtf8(bytes, static_cast<qsizetype>(LongestErrorText)) + QChar(0x2026);
}

/// Runs the body; where it throws, leaves the text on the stack, or nothing for want of memory. What was on
/// the stack before stays: it may be marked as to be closed.
int performCatching(lua_State *state, KVKLuaBody body)
{
    const int top = lua_gettop(state);
    QString why;
    try {
        return body(state);
    } catch (...) {
        why = KVKTextOfException(std::current_exception());
    }
    lua_settop(state, top);
    try {
        KVKLuaPush(state, why);
    } catch (const KVKLuaValueError &) {
        return FailedWithoutText;
    }
    return Failed;
}

} // namespace

bool KVKLuaProtected(lua_State *state, int (*function)(lua_State *), void *data, int results)
{
    // Neither of these allocates, so that nothing is raised outside the call.
    lua_pushcfunction(state, function);
    lua_pushlightuserdata(state, data);
    return lua_pcall(state, 1, results, 0) == LUA_OK;
}

QString KVKLuaTextOnTop(lua_State *state)
{
    if (lua_type(state, -1) == LUA_TSTRING)
        return textOnTop(state);
    const QString type = QLatin1String(luaL_typename(state, -1));
    lua_pushcfunction(state, tostringOfArgument);
    lua_pushvalue(state, -2);
    const bool ok = lua_pcall(state, 1, 1, 0) == LUA_OK;
    // What the failed attempt raises may in its turn be an object that has no text.
    const QString text = lua_type(state, -1) == LUA_TSTRING ? textOnTop(state) : QString();
    lua_pop(state, 1);
    if (ok)
        return text;
    return QStringLiteral("an error that has no text (a %1%2)")
        .arg(type, text.isEmpty() ? text : QStringLiteral(": ") + text);
}

QString KVKTextOfException(const std::exception_ptr &problem)
{
    try {
        std::rethrow_exception(problem);
    } catch (const std::exception &known) {
        return QString::fromUtf8(known.what());
    } catch (...) {
        return QStringLiteral("an exception of an unknown type");
    }
}

int KVKLuaPerform(lua_State *state, KVKLuaBody body)
{
    const int results = performCatching(state, body);
    KVKLuaRunner::look(state);
    if (results >= 0)
        return results;
    // From here on no C++ object is left that the jump could pass over.
    if (results == FailedWithoutText)
        return luaL_error(state, KVKLuaNoMemory);
    luaL_where(state, 1);
    lua_insert(state, -2);
    lua_concat(state, 2);
    return lua_error(state);
}

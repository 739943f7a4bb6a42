#include "kovan/KovanLuaSequencer/KVKLuaBindings.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"
#include "kovan/KovanLuaSequencer/KVKLuaValue.h"

#include <lua.hpp>

#include <chrono>
#include <cmath>

// Lua reports errors by a jump that runs no destructors. Every function here therefore does its work in a C++
// function that catches all exceptions and leaves an error text on the stack, and raises the Lua error after
// that has returned.

namespace {

constexpr int InstructionsBetweenLooks = 1000;
constexpr double LongestSleep = 1.0e6;
constexpr char StoppedText[] = "stopped";

KVKLuaScope &scopeOf(lua_State *state)
{
    return **static_cast<KVKLuaScope **>(lua_getextraspace(state));
}

void pushText(lua_State *state, const QByteArray &text)
{
    lua_pushlstring(state, text.constData(), static_cast<std::size_t>(text.size()));
}

class ArgumentError : public std::runtime_error
{
public:
    explicit ArgumentError(const QString &text)
        : std::runtime_error(text.toStdString())
    {}
};

QString nameOf(KVKArgType type)
{
    return type == KVKArgType::NSNumber ? QStringLiteral("a number") : QStringLiteral("a table");
}

platform::Value readArgument(lua_State *state, const KVKBoundFunction &function, int position)
{
    const KVKArgType wanted = function.arguments()[static_cast<std::size_t>(position - 1)];
    const int expected = wanted == KVKArgType::NSNumber ? LUA_TNUMBER : LUA_TTABLE;
    if (lua_type(state, position) != expected) {
        throw ArgumentError(QStringLiteral("%1: argument %2 must be %3, not %4")
                                .arg(function.name())
                                .arg(position)
                                .arg(nameOf(wanted), QLatin1String(luaL_typename(state, position))));
    }
    const QString path = QStringLiteral("%1: argument %2").arg(function.name()).arg(position);
    if (wanted == KVKArgType::NSDictionary)
        return KVKLuaToDictionary(state, position, path);
    return KVKLuaToValue(state, position, path);
}

platform::Array readArguments(lua_State *state, const KVKBoundFunction &function)
{
    const int wanted = static_cast<int>(function.arguments().size());
    const int given = lua_gettop(state);
    if (given > wanted) {
        throw ArgumentError(
            QStringLiteral("%1: takes %2 arguments, got %3").arg(function.name()).arg(wanted).arg(given));
    }
    platform::Array arguments;
    for (int position = 1; position <= wanted; ++position)
        arguments.append(readArgument(state, function, position));
    return arguments;
}

void pushError(lua_State *state, const platform::Error &error)
{
    if (!error.isPresent()) {
        lua_pushnil(state);
        return;
    }
    KVKLuaPush(state, platform::Dictionary{{QStringLiteral("domain"), error.domain},
                                           {QStringLiteral("code"), static_cast<qlonglong>(error.code)},
                                           {QStringLiteral("message"), error.localizedDescription}});
}

/// Calls the function and pushes result and error; false with a text on the stack when it threw.
bool callFunction(lua_State *state)
{
    const auto index = static_cast<std::size_t>(lua_tointeger(state, lua_upvalueindex(1)));
    KVKLuaScope &scope = scopeOf(state);
    const KVKBoundFunction &function = scope.functions()[index];
    KVKLuaCall call;
    call.name = function.name();
    scope.observer().sequenceCalls(call.name);
    try {
        call.arguments = readArguments(state, function);
        platform::Error error;
        call.result = function.call(call.arguments, &error);
        if (error.isPresent())
            call.error = error;
        scope.observer().sequenceCalled(call);
        KVKLuaPush(state, call.result);
        pushError(state, error);
        return true;
    } catch (const std::exception &problem) {
        call.error = platform::Error{QStringLiteral("exception"), 0, QString::fromUtf8(problem.what())};
    }
    scope.observer().sequenceCalled(call);
    pushText(state, call.error->localizedDescription.toUtf8());
    return false;
}

/// Puts file and line of the calling script before the text on the top, and raises it.
int raise(lua_State *state)
{
    luaL_where(state, 1);
    lua_insert(state, -2);
    lua_concat(state, 2);
    return lua_error(state);
}

int pluginFunction(lua_State *state)
{
    return callFunction(state) ? 2 : raise(state);
}

void writeLog(lua_State *state)
{
    std::size_t length = 0;
    const char *bytes = luaL_tolstring(state, 1, &length);
    KVKLogEvent(KVKLogLevel::Default, "%@", {QString::fromUtf8(bytes, static_cast<qsizetype>(length))});
}

int logFunction(lua_State *state)
{
    luaL_checkany(state, 1);
    writeLog(state);
    return 0;
}

int sleepFunction(lua_State *state)
{
    const lua_Number seconds = luaL_checknumber(state, 1);
    luaL_argcheck(state, seconds >= 0.0, 1, "must be a number of seconds, 0 or more");
    scopeOf(state).sleep(seconds);
    return 0;
}

int refusedFunction(lua_State *state)
{
    return luaL_error(state, "%s is not available to a sequence", lua_tostring(state, lua_upvalueindex(1)));
}

/// Ends the script once it is stopped. From then on every instruction is looked at, so that a script that
/// catches the error does not get far.
void endWhenStopped(lua_State *state, lua_Debug *)
{
    if (!scopeOf(state).isStopped())
        return;
    lua_sethook(state, endWhenStopped, LUA_MASKCOUNT, 1);
    lua_pushstring(state, StoppedText);
    lua_error(state);
}

/// Replaces a function of a standard library by one that refuses.
void refuse(lua_State *state, const char *library, const char *function)
{
    lua_getglobal(state, library);
    lua_pushfstring(state, "%s.%s", library, function);
    lua_pushcclosure(state, refusedFunction, 1);
    lua_setfield(state, -2, function);
    lua_pop(state, 1);
}

} // namespace

KVKLuaScope::KVKLuaScope(const std::vector<KVKBoundFunction> &functions, KVKLuaSequenceObserver &observer)
    : m_functions(functions)
    , m_observer(observer)
{}

void KVKLuaScope::stop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopped = true;
    }
    m_changed.notify_all();
}

void KVKLuaScope::sleep(double seconds)
{
    const std::chrono::duration<double> time(std::min(seconds, LongestSleep));
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, time, [this] { return m_stopped.load(); });
}

void KVKLuaBind(lua_State *state, KVKLuaScope &scope)
{
    // The extra space is copied into every coroutine, where the functions find it too.
    *static_cast<KVKLuaScope **>(lua_getextraspace(state)) = &scope;
    for (std::size_t i = 0; i < scope.functions().size(); ++i) {
        lua_pushinteger(state, static_cast<lua_Integer>(i));
        lua_pushcclosure(state, pluginFunction, 1);
        lua_setglobal(state, scope.functions()[i].name().toUtf8().constData());
    }
    lua_register(state, "log", logFunction);
    lua_register(state, "sleep", sleepFunction);
    // These would end the station, or wait for a person at a terminal.
    refuse(state, "os", "exit");
    refuse(state, "io", "read");
    refuse(state, "io", "lines");
    refuse(state, "debug", "sethook");
    refuse(state, "debug", "debug");
    lua_sethook(state, endWhenStopped, LUA_MASKCOUNT, InstructionsBetweenLooks);
}

#include "kovan/KovanLuaSequencer/KVKLuaBindings.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanLuaSequencer/KVKCallRules.h"
#include "kovan/KovanLuaSequencer/KVKLuaCallback.h"
#include "kovan/KovanLuaSequencer/KVKLuaHold.h"
#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "kovan/KovanLuaSequencer/KVKLuaRun.h"
#include "kovan/KovanLuaSequencer/KVKLuaRunBindings.h"
#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"
#include "kovan/KovanLuaSequencer/KVKLuaSharedBindings.h"
#include "kovan/KovanLuaSequencer/KVKLuaValue.h"

#include <lua.hpp>

#include <chrono>
#include <optional>
#include <utility>

namespace {

/// In seconds, more than eleven days: what a clock can count ends somewhere beyond.
constexpr double LongestSleep = 1.0e6;

class ArgumentError : public std::runtime_error
{
public:
    explicit ArgumentError(const QString &text)
        : std::runtime_error(text.toStdString())
    {}
};

platform::Value readArgument(lua_State *state, const KVKBoundFunction &function, int position,
                             KVKLuaHandedOver &functions)
{
    const KVKArgType wanted = function.arguments()[static_cast<std::size_t>(position - 1)];
    const QString problem =
        KVKProblemOfType(function, position, QLatin1String(luaL_typename(state, position)));
    if (!problem.isEmpty())
        throw ArgumentError(problem);
    const QString path = KVKNameOfArgument(function, position);
    if (wanted == KVKArgType::NSDictionary) {
        return KVKLuaToDictionary(state, position, path,
                                  [&](const QString &key, const QString &place) -> platform::Value {
                                      if (!function.takesFunctionUnder(key))
                                          return {};
                                      return platform::Value::fromValue(functions.add(state, -1, place));
                                  });
    }
    return KVKLuaToValue(state, position, path);
}

platform::Array readArguments(lua_State *state, const KVKBoundFunction &function, KVKLuaHandedOver &functions)
{
    const int wanted = static_cast<int>(function.arguments().size());
    const QString problem = KVKProblemOfCount(function, lua_gettop(state));
    if (!problem.isEmpty())
        throw ArgumentError(problem);
    platform::Array arguments;
    for (int position = 1; position <= wanted; ++position)
        arguments.append(readArgument(state, function, position, functions));
    return arguments;
}

void pushError(lua_State *state, const platform::Error &error)
{
    if (!error.isPresent()) {
        lua_pushnil(state);
        return;
    }
    platform::Dictionary table = error.additions;
    table.insert(QStringLiteral("domain"), error.domain);
    table.insert(QStringLiteral("code"), static_cast<qlonglong>(error.code));
    table.insert(QStringLiteral("message"), error.localizedDescription);
    KVKLuaPush(state, table);
}

/// The body of a plug-in's function. Upvalue: its place among the scope's functions.
int callPlugin(lua_State *state)
{
    const auto index = static_cast<std::size_t>(lua_tointeger(state, lua_upvalueindex(1)));
    KVKLuaScope &scope = KVKLuaScope::of(state);
    const KVKBoundFunction &function = scope.functions()[index];
    KVKLuaCall call;
    call.name = function.name();
    scope.observer().sequenceCalls(call.name);
    // Before the call is told of as ended: whoever keeps an argument keeps a function that is gone.
    std::optional<KVKLuaHandedOver> functions(std::in_place);
    try {
        call.arguments = readArguments(state, function, *functions);
        // Nobody knows from outside which functions wait for the operator.
        if (scope.sharedRun())
            scope.sharedRun()->refuseInsideUpdate(scope.partner(), call.name);
        platform::Error error;
        call.result = function.call(call.arguments, &error);
        if (error.isPresent())
            call.error = error;
        functions.reset();
    } catch (...) {
        functions.reset();
        call.error =
            platform::Error{QStringLiteral("exception"), 0, KVKTextOfException(std::current_exception())};
        scope.observer().sequenceCalled(call);
        // Told of, and still the sequence's error.
        throw;
    }
    scope.observer().sequenceCalled(call);
    KVKLuaPush(state, call.result);
    pushError(state, call.error.value_or(platform::Error{}));
    return 2;
}

/// The body of `log`, with the text on the top.
int writeLog(lua_State *state)
{
    std::size_t length = 0;
    const char *bytes = lua_tolstring(state, -1, &length);
    KVKLogEvent(KVKLogLevel::Default, "%@", {QString::fromUtf8(bytes, static_cast<qsizetype>(length))});
    return 0;
}

int logFunction(lua_State *state)
{
    luaL_checkany(state, 1);
    luaL_tolstring(state, 1, nullptr);
    return KVKLuaPerform(state, writeLog);
}

int sleepFunction(lua_State *state)
{
    const lua_Number seconds = luaL_checknumber(state, 1);
    luaL_argcheck(state, seconds >= 0.0, 1, "must be a number of seconds, 0 or more");
    KVKLuaScope::of(state).sleep(seconds);
    KVKLuaRunner::look(state);
    return 0;
}

int pushGlobals(lua_State *state)
{
    KVKLuaPush(state, KVKLuaScope::of(state).globals());
    return 1;
}

void setGlobals(lua_State *state)
{
    lua_pushcfunction(state, KVKLuaFunction<pushGlobals>);
    lua_call(state, 0, 1);
    lua_pushglobaltable(state);
    lua_pushnil(state);
    while (lua_next(state, -3) != 0) {
        lua_pushvalue(state, -2);
        lua_insert(state, -2);
        lua_rawset(state, -4);
    }
    lua_pop(state, 2);
}

} // namespace

KVKLuaScope::KVKLuaScope(const std::vector<KVKBoundFunction> &functions, platform::Dictionary globals,
                         Place place, KVKLuaLimits limits, KVKLuaSequenceObserver &observer)
    : KVKLuaRunner({"a sequence", true}, std::move(limits))
    , m_functions(functions)
    , m_globals(std::move(globals))
    , m_place(place)
    , m_observer(observer)
{
    for (const KVKBoundFunction &function : functions)
        m_names.push_back(function.name().toUtf8());
}

KVKLuaScope &KVKLuaScope::of(lua_State *state)
{
    return static_cast<KVKLuaScope &>(KVKLuaRunner::of(state));
}

void KVKLuaScope::stop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopped = true;
    }
    m_changed.notify_all();
    if (sharedRun())
        sharedRun()->interrupt(partner());
}

void KVKLuaScope::sleep(double seconds)
{
    const std::chrono::duration<double> time(std::min(seconds, LongestSleep));
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, time, [this] { return m_stopped.load(); });
}

void KVKLuaScope::bind(lua_State *state)
{
    for (std::size_t i = 0; i < m_names.size(); ++i) {
        lua_pushinteger(state, static_cast<lua_Integer>(i));
        lua_pushcclosure(state, KVKLuaFunction<callPlugin>, 1);
        lua_setglobal(state, m_names[i].constData());
    }
    lua_register(state, "log", logFunction);
    lua_register(state, "sleep", sleepFunction);
    if (sharedRun()) {
        KVKLuaPrepareHolds(state);
        KVKLuaBindRun(state);
        KVKLuaBindShared(state);
    }
    setGlobals(state);
}

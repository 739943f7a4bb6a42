#include "kovan/KovanLuaSequencer/KVKLuaCallback.h"

#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "kovan/KovanLuaSequencer/KVKLuaValue.h"

#include <lua.hpp>

#include <utility>

namespace {

/// The function, its message handler, and what a call of it takes besides.
constexpr int SlotsOfACall = 8;

/// Keeps its second argument, and notes the reference in the place that the first one tells.
int keepFunction(lua_State *state)
{
    int &reference = *static_cast<int *>(lua_touserdata(state, 1));
    lua_settop(state, 2);
    reference = luaL_ref(state, LUA_REGISTRYINDEX);
    return 0;
}

/// The message handler: what was raised as a text, and how it came to it.
int addTraceback(lua_State *state)
{
    if (lua_type(state, 1) != LUA_TSTRING && luaL_getmetafield(state, 1, "__tostring") == LUA_TNIL)
        lua_pushfstring(state, "an error that has no text (a %s)", luaL_typename(state, 1));
    else
        luaL_tolstring(state, 1, nullptr);
    luaL_traceback(state, state, lua_tostring(state, -1), 1);
    return 1;
}

/// Puts the stack back to its height, also when an exception leaves.
class TopKeeper
{
public:
    explicit TopKeeper(lua_State *state)
        : m_state(state)
        , m_top(lua_gettop(state))
    {}
    ~TopKeeper() { lua_settop(m_state, m_top); }
    TopKeeper(const TopKeeper &) = delete;
    TopKeeper &operator=(const TopKeeper &) = delete;

    [[nodiscard]] int top() const { return m_top; }

private:
    lua_State *m_state;
    int m_top;
};

} // namespace

KVKLuaCallback::KVKLuaCallback(lua_State *state, int index, QString path)
    : m_path(std::move(path))
    , m_thread(std::this_thread::get_id())
    , m_state(state)
{
    const int function = lua_absindex(state, index);
    const TopKeeper keeper(state);
    if (lua_checkstack(state, SlotsOfACall) == 0)
        throw KVKLuaCallbackError(QStringLiteral("%1: no room on the stack").arg(m_path));
    lua_pushcfunction(state, keepFunction);
    lua_pushlightuserdata(state, &m_reference);
    lua_pushvalue(state, function);
    if (lua_pcall(state, 2, 0, 0) != LUA_OK)
        throw KVKLuaCallbackError(QStringLiteral("%1: %2").arg(m_path, KVKLuaTextOnTop(state)));
}

void KVKLuaCallback::giveBack() noexcept
{
    // Within the reference table, which has room for what it held: nothing is allocated.
    if (lua_State *state = m_state.exchange(nullptr))
        luaL_unref(state, LUA_REGISTRYINDEX, m_reference);
}

platform::Array KVKLuaCallback::call(const platform::Array &arguments)
{
    if (std::this_thread::get_id() != m_thread)
        throw KVKLuaCallbackError(QStringLiteral("%1: called on another thread than its own").arg(m_path));
    lua_State *state = m_state;
    if (!state)
        throw KVKLuaCallbackError(
            QStringLiteral("%1: called after the call that it was handed to").arg(m_path));
    const Running running;
    return callIn(state, arguments);
}

platform::Array KVKLuaCallback::callIn(lua_State *state, const platform::Array &arguments) const
{
    const TopKeeper keeper(state);
    const auto count = static_cast<int>(arguments.size());
    if (lua_checkstack(state, SlotsOfACall + count) == 0)
        throw KVKLuaCallbackError(QStringLiteral("%1: no room on the stack").arg(m_path));
    lua_pushcfunction(state, addTraceback);
    // Neither this nor what stands above allocates, so that nothing is raised outside the protected call.
    lua_rawgeti(state, LUA_REGISTRYINDEX, m_reference);
    for (const platform::Value &argument : arguments)
        KVKLuaPush(state, argument);
    if (lua_pcall(state, count, LUA_MULTRET, keeper.top() + 1) != LUA_OK)
        throw KVKLuaCallbackError(KVKLuaTextOnTop(state));
    return resultsAbove(state, keeper.top() + 1);
}

platform::Array KVKLuaCallback::resultsAbove(lua_State *state, int top) const
{
    platform::Array results;
    for (int place = top + 1, last = lua_gettop(state); place <= last; ++place)
        results.append(KVKLuaToValue(
            state, place, QStringLiteral("%1: result %2").arg(m_path, QString::number(place - top))));
    return results;
}

KVKLuaHandedOver::~KVKLuaHandedOver()
{
    for (const std::shared_ptr<KVKLuaCallback> &function : m_functions) {
        // Null where the function could not be kept.
        if (function)
            function->giveBack();
    }
}

std::shared_ptr<platform::Callback> KVKLuaHandedOver::add(lua_State *state, int index, const QString &path)
{
    // In the list first: what is not in it could not be given back.
    m_functions.push_back(nullptr);
    m_functions.back() = std::make_shared<KVKLuaCallback>(state, index, path);
    return m_functions.back();
}

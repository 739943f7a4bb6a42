#include "kovan/KovanLuaSequencer/KVKLuaRunBindings.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanLuaSequencer/KVKLuaBindings.h"
#include "kovan/KovanLuaSequencer/KVKLuaHold.h"
#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "kovan/KovanLuaSequencer/KVKLuaRun.h"
#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"
#include "kovan/KovanLuaSequencer/KVKLuaValue.h"

#include <lua.hpp>

#include <optional>

namespace {

constexpr double LongestWait = 1.0e6;
/// Where the hold of a lock stands: behind the name, before the function and its arguments.
constexpr int HoldPlace = 2;

/// Tells the host what the sequence waits for, for as long as this lives.
class WaitNote
{
public:
    WaitNote(KVKLuaSequenceObserver &observer, const KVKLuaWait &wait)
        : m_observer(observer)
    {
        tell(wait);
    }
    ~WaitNote() { tell({}); }
    WaitNote(const WaitNote &) = delete;
    WaitNote &operator=(const WaitNote &) = delete;

private:
    /// An observer that breaks its promise not to throw must not keep the wait from its end.
    void tell(const KVKLuaWait &wait) noexcept
    {
        try {
            m_observer.sequenceWaits(wait);
        } catch (...) {
            KVKLogEvent(KVKLogLevel::Error, "a wait of a sequence was not taken: %@",
                        {KVKTextOfException(std::current_exception())});
        }
    }

    KVKLuaSequenceObserver &m_observer;
};

/// Raises a Lua error unless the first argument can be the name of a meeting or a lock.
void checkName(lua_State *state)
{
    luaL_checktype(state, 1, LUA_TSTRING);
    luaL_argcheck(state, lua_rawlen(state, 1) > 0, 1, "must not be empty");
}

QByteArray nameArgument(lua_State *state)
{
    std::size_t length = 0;
    const char *bytes = lua_tolstring(state, 1, &length);
    return {bytes, static_cast<qsizetype>(length)};
}

/// The body of `rendezvous`, its arguments checked.
int meet(lua_State *state)
{
    const KVKLuaScope &scope = KVKLuaScope::of(state);
    const QByteArray name = nameArgument(state);
    KVKLuaRun::Limit limit;
    if (!lua_isnoneornil(state, 2))
        limit.emplace(lua_tonumber(state, 2));
    QStringList missing;
    if (!scope.sharedRun()->comeTo(scope.partner(), name, limit.has_value())) {
        std::optional<WaitNote> note;
        // Whoever only looks who is there does not wait.
        if (!limit || limit->count() > 0.0) {
            note.emplace(
                scope.observer(),
                KVKLuaWait{QStringLiteral("others at \"%1\"").arg(KVKShownName(name)), limit.has_value()});
        }
        missing = scope.sharedRun()->awaitOthers(scope.partner(), limit);
    }
    if (missing.isEmpty()) {
        lua_pushboolean(state, 1);
        return 1;
    }
    lua_pushnil(state);
    KVKLuaPush(state, missing.join(QStringLiteral(", ")));
    return 2;
}

int rendezvousFunction(lua_State *state)
{
    checkName(state);
    if (!lua_isnoneornil(state, 2)) {
        const lua_Number seconds = luaL_checknumber(state, 2);
        luaL_argcheck(state, seconds >= 0.0 && seconds <= LongestWait, 2,
                      "must be a number of seconds, 0 to 1000000");
    }
    return KVKLuaPerform(state, meet);
}

void giveUpLock(KVKLuaScope &scope, const KVKLuaHold &hold) noexcept
{
    scope.sharedRun()->leave(scope.partner(),
                             QByteArray::fromRawData(hold.text, static_cast<qsizetype>(hold.length)));
}

/// Takes the lock whose name and hold stand on the stack.
int takeLock(lua_State *state)
{
    const KVKLuaScope &scope = KVKLuaScope::of(state);
    const QByteArray name = nameArgument(state);
    if (!scope.sharedRun()->enter(scope.partner(), name)) {
        const WaitNote note(scope.observer(), {QStringLiteral("lock \"%1\"").arg(KVKShownName(name)), false});
        scope.sharedRun()->awaitLock(scope.partner());
    }
    static_cast<KVKLuaHold *>(lua_touserdata(state, HoldPlace))->isHeld = true;
    return 0;
}

int lockedFunction(lua_State *state)
{
    checkName(state);
    luaL_checktype(state, 2, LUA_TFUNCTION);
    KVKLuaInsertHold(state, HoldPlace, 1, giveUpLock);
    KVKLuaPerform(state, takeLock);
    KVKLuaCallHolding(state, HoldPlace, LUA_MULTRET);
    KVKLuaGiveUp(state, static_cast<KVKLuaHold *>(lua_touserdata(state, HoldPlace)));
    return lua_gettop(state) - HoldPlace;
}

} // namespace

void KVKLuaBindRun(lua_State *state)
{
    lua_register(state, "rendezvous", rendezvousFunction);
    lua_register(state, "locked", lockedFunction);
}

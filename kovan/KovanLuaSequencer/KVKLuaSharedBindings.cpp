#include "kovan/KovanLuaSequencer/KVKLuaSharedBindings.h"

#include "kovan/KovanLuaSequencer/KVKLuaBindings.h"
#include "kovan/KovanLuaSequencer/KVKLuaHold.h"
#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"
#include "kovan/KovanLuaSequencer/KVKLuaRun.h"
#include "kovan/KovanLuaSequencer/KVKLuaSharedConversion.h"

#include <lua.hpp>

namespace {

/// Where the hold of an update stands: behind the key, before the function.
constexpr int HoldPlace = 2;

const QString OfTable = QStringLiteral("shared");
const QString OfUpdate = QStringLiteral("shared.update");

bool isUpdateKey(const KVKLuaSharedKey &key)
{
    const QByteArray *text = std::get_if<QByteArray>(&key);
    return text && *text == "update";
}

/// A key that a script may write to.
KVKLuaSharedKey ownKey(lua_State *state, int index, const QString &path)
{
    const KVKLuaSharedKey key = KVKLuaToSharedKey(state, index, path);
    if (isUpdateKey(key))
        throw KVKLuaSharedTableError(QStringLiteral("shared.update is a function, and its name no key"));
    return key;
}

KVKLuaSharedKey keyOf(const KVKLuaHold &hold)
{
    if (!hold.text)
        return static_cast<qint64>(hold.number);
    return QByteArray(hold.text, static_cast<qsizetype>(hold.length));
}

void giveUpUpdate(KVKLuaScope &scope, const KVKLuaHold &hold) noexcept
{
    scope.sharedRun()->leaveUpdate(scope.partner(), keyOf(hold));
}

/// The body of `shared.update` before the function is called, with key and hold on the stack. Pushes the
/// value.
int beginUpdate(lua_State *state)
{
    const KVKLuaScope &scope = KVKLuaScope::of(state);
    const KVKLuaSharedKey key = ownKey(state, 1, OfUpdate);
    const KVKLuaSharedTable::Value value = scope.sharedRun()->beginUpdate(scope.partner(), key);
    static_cast<KVKLuaHold *>(lua_touserdata(state, HoldPlace))->isHeld = true;
    KVKLuaPushShared(state, value.get());
    return 1;
}

/// The body after it, with what it returned on the top.
int endUpdate(lua_State *state)
{
    const KVKLuaScope &scope = KVKLuaScope::of(state);
    const KVKLuaSharedKey key = ownKey(state, 1, OfUpdate);
    scope.sharedRun()->shared().endUpdate(key, KVKLuaToShared(state, -1, KVKTextOfSharedKey(key)));
    return 1;
}

/// Calls a function with a value, and stores what it returns.
int updateFunction(lua_State *state)
{
    luaL_checkany(state, 1);
    luaL_checktype(state, 2, LUA_TFUNCTION);
    lua_settop(state, 2);
    KVKLuaHold *hold = KVKLuaInsertHold(state, HoldPlace, 1, giveUpUpdate);
    KVKLuaPerform(state, beginUpdate);
    KVKLuaCallHolding(state, HoldPlace, 1);
    KVKLuaPerform(state, endUpdate);
    KVKLuaGiveUp(state, hold);
    return 1;
}

int readShared(lua_State *state)
{
    const KVKLuaSharedKey key = KVKLuaToSharedKey(state, 2, OfTable);
    if (isUpdateKey(key))
        lua_pushcfunction(state, updateFunction);
    else
        KVKLuaPushShared(state, KVKLuaScope::of(state).sharedRun()->shared().read(key).get());
    return 1;
}

int writeShared(lua_State *state)
{
    const KVKLuaScope &scope = KVKLuaScope::of(state);
    const KVKLuaSharedKey key = ownKey(state, 2, OfTable);
    scope.sharedRun()->shared().write(key, KVKLuaToShared(state, 3, KVKTextOfSharedKey(key)),
                                      scope.partner());
    return 0;
}

int lengthOfShared(lua_State *state)
{
    lua_pushinteger(state, KVKLuaScope::of(state).sharedRun()->shared().length());
    return 1;
}

int copyShared(lua_State *state)
{
    KVKLuaPushShared(state, KVKLuaScope::of(state).sharedRun()->shared().all());
    return 1;
}

/// What `pairs` asks for: `next`, which the upvalue keeps, and a copy to go over.
int pairsOfShared(lua_State *state)
{
    lua_pushvalue(state, lua_upvalueindex(1));
    KVKLuaPerform(state, copyShared);
    lua_pushnil(state);
    return 3;
}

constexpr luaL_Reg Methods[] = {{"__index", KVKLuaFunction<readShared>},
                                {"__newindex", KVKLuaFunction<writeShared>},
                                {"__len", KVKLuaFunction<lengthOfShared>},
                                {nullptr, nullptr}};

} // namespace

void KVKLuaBindShared(lua_State *state)
{
    lua_newuserdatauv(state, 0, 0);
    luaL_newlib(state, Methods);
    lua_getglobal(state, "next");
    lua_pushcclosure(state, pairsOfShared, 1);
    lua_setfield(state, -2, "__pairs");
    lua_pushliteral(state, "shared");
    lua_setfield(state, -2, "__name");
    lua_pushliteral(state, "shared");
    lua_setfield(state, -2, "__metatable");
    lua_setmetatable(state, -2);
    lua_setglobal(state, "shared");
}

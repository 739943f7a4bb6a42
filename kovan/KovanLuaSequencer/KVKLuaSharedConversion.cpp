#include "kovan/KovanLuaSequencer/KVKLuaSharedConversion.h"

#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"

#include <lua.hpp>

#include <algorithm>
#include <vector>

namespace {

constexpr std::size_t DeepestNesting = 64;
constexpr int SlotsPerLevel = 4;
constexpr qsizetype LongestPath = 120;

[[noreturn]] void refuse(const QString &path, const QString &why)
{
    throw KVKLuaSharedTableError(QStringLiteral("%1 %2").arg(path.left(LongestPath), why));
}

QByteArray bytesAt(lua_State *state, int index)
{
    std::size_t length = 0;
    const char *bytes = lua_tolstring(state, index, &length);
    return {bytes, static_cast<qsizetype>(length)};
}

QString below(const QString &path, const KVKLuaSharedKey &key)
{
    // What stands behind "shared" in the text of a key of the table itself.
    return path + KVKTextOfSharedKey(key).mid(6);
}

class Copier
{
public:
    explicit Copier(lua_State *state)
        : m_state(state)
    {}

    KVKLuaSharedValue copy(int index, const QString &path)
    {
        if (lua_type(m_state, index) == LUA_TTABLE)
            return copyTable(lua_absindex(m_state, index), path);
        KVKLuaSharedValue value = copySimple(index, path);
        take(value.size(), path);
        return value;
    }

private:
    KVKLuaSharedValue copySimple(int index, const QString &path)
    {
        switch (lua_type(m_state, index)) {
        case LUA_TBOOLEAN:
            return KVKLuaSharedValue(lua_toboolean(m_state, index) != 0);
        case LUA_TNUMBER:
            return copyNumber(index);
        case LUA_TSTRING:
            return KVKLuaSharedValue(bytesAt(m_state, index));
        default:
            refuse(path, QStringLiteral("is a %1, which cannot be shared")
                             .arg(QLatin1String(luaL_typename(m_state, index))));
        }
    }

    KVKLuaSharedValue copyNumber(int index)
    {
        if (lua_isinteger(m_state, index))
            return KVKLuaSharedValue(static_cast<qint64>(lua_tointeger(m_state, index)));
        return KVKLuaSharedValue(static_cast<double>(lua_tonumber(m_state, index)));
    }

    void enter(int table, const QString &path)
    {
        const void *identity = lua_topointer(m_state, table);
        if (std::find(m_around.begin(), m_around.end(), identity) != m_around.end())
            refuse(path, QStringLiteral("is a table that contains itself"));
        if (m_around.size() == DeepestNesting || lua_checkstack(m_state, SlotsPerLevel) == 0)
            refuse(path, QStringLiteral("is a table that is nested too deep"));
        m_around.push_back(identity);
    }

    KVKLuaSharedValue copyTable(int table, const QString &path)
    {
        enter(table, path);
        KVKLuaSharedEntries entries;
        std::size_t size = 0;
        lua_pushnil(m_state);
        while (lua_next(m_state, table) != 0) {
            const KVKLuaSharedKey key = KVKLuaToSharedKey(m_state, -2, path);
            const auto entry = entries.emplace(key, copy(-1, below(path, key))).first;
            const QByteArray *text = std::get_if<QByteArray>(&key);
            size += entry->second.size() + (text ? static_cast<std::size_t>(text->size()) : 0);
            lua_pop(m_state, 1);
        }
        m_around.pop_back();
        KVKLuaSharedValue value(std::make_shared<const KVKLuaSharedEntries>(std::move(entries)), size);
        take(value.size() - size, path);
        return value;
    }

    /// A table that stands in others many times is copied as often, and may grow beyond all measure by that.
    void take(std::size_t size, const QString &path)
    {
        m_taken += size;
        if (m_taken > KVKLuaSharedTable::MostMemory)
            refuse(path, QStringLiteral("holds more than there is room for"));
    }

    lua_State *m_state;
    std::vector<const void *> m_around; ///< The tables that the current one stands in.
    std::size_t m_taken = 0;
};

// What follows runs in a protected call, and makes no C++ object that has a destructor.

void push(lua_State *state, const KVKLuaSharedValue &value);

void pushKey(lua_State *state, const KVKLuaSharedKey &key)
{
    if (const qint64 *number = std::get_if<qint64>(&key)) {
        lua_pushinteger(state, *number);
        return;
    }
    const QByteArray &text = *std::get_if<QByteArray>(&key);
    lua_pushlstring(state, text.constData(), static_cast<std::size_t>(text.size()));
}

void pushTable(lua_State *state, const KVKLuaSharedEntries &entries)
{
    luaL_checkstack(state, SlotsPerLevel, "a shared value is nested too deep");
    lua_newtable(state);
    for (const auto &[key, value] : entries) {
        pushKey(state, key);
        push(state, value);
        lua_rawset(state, -3);
    }
}

void push(lua_State *state, const KVKLuaSharedValue &value)
{
    const KVKLuaSharedValue::Content &content = value.content();
    if (const bool *truth = std::get_if<bool>(&content))
        lua_pushboolean(state, *truth ? 1 : 0);
    else if (const qint64 *whole = std::get_if<qint64>(&content))
        lua_pushinteger(state, *whole);
    else if (const double *number = std::get_if<double>(&content))
        lua_pushnumber(state, *number);
    else if (const QByteArray *text = std::get_if<QByteArray>(&content))
        lua_pushlstring(state, text->constData(), static_cast<std::size_t>(text->size()));
    else
        pushTable(state, **std::get_if<KVKLuaSharedValue::Table>(&content));
}

int pushValue(lua_State *state)
{
    push(state, **static_cast<const KVKLuaSharedValue **>(lua_touserdata(state, 1)));
    return 1;
}

int pushEntries(lua_State *state)
{
    lua_newtable(state);
    for (const auto &[key, value] :
         **static_cast<const KVKLuaSharedTable::Entries **>(lua_touserdata(state, 1))) {
        pushKey(state, key);
        push(state, *value);
        lua_rawset(state, -3);
    }
    return 1;
}

void pushProtected(lua_State *state, int (*function)(lua_State *), void *data)
{
    if (KVKLuaProtected(state, function, data, 1))
        return;
    const QString why = KVKLuaTextOnTop(state);
    lua_pop(state, 1);
    throw KVKLuaSharedTableError(why);
}

} // namespace

KVKLuaSharedKey KVKLuaToSharedKey(lua_State *state, int index, const QString &path)
{
    const int type = lua_type(state, index);
    if (type == LUA_TSTRING)
        return bytesAt(state, index);
    int isWhole = 0;
    const lua_Integer number = type == LUA_TNUMBER ? lua_tointegerx(state, index, &isWhole) : 0;
    if (isWhole != 0)
        return static_cast<qint64>(number);
    const QString what = type == LUA_TNUMBER
                             ? QString::number(lua_tonumber(state, index))
                             : QStringLiteral("a ") + QLatin1String(luaL_typename(state, index));
    refuse(path, QStringLiteral("has texts and whole numbers as keys, not %1").arg(what));
}

KVKLuaSharedTable::Value KVKLuaToShared(lua_State *state, int index, const QString &path)
{
    if (lua_isnil(state, index))
        return nullptr;
    const int absolute = lua_absindex(state, index);
    const int top = lua_gettop(state);
    try {
        return std::make_shared<const KVKLuaSharedValue>(Copier(state).copy(absolute, path));
    } catch (...) {
        lua_settop(state, top);
        throw;
    }
}

void KVKLuaPushShared(lua_State *state, const KVKLuaSharedValue *value)
{
    if (value)
        pushProtected(state, pushValue, &value);
    else
        lua_pushnil(state);
}

void KVKLuaPushShared(lua_State *state, const KVKLuaSharedTable::Entries &entries)
{
    const KVKLuaSharedTable::Entries *given = &entries;
    pushProtected(state, pushEntries, &given);
}

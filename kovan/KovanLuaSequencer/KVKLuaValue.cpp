#include "kovan/KovanLuaSequencer/KVKLuaValue.h"

#include <QStringDecoder>

#include <lua.hpp>

namespace {

constexpr int DeepestNesting = 64;
constexpr int SlotsPerLevel = 4;

class Reader
{
public:
    explicit Reader(lua_State *state)
        : m_state(state)
    {}

    platform::Value read(int index, const QString &path, int depth)
    {
        switch (lua_type(m_state, index)) {
        case LUA_TNIL:
            return {};
        case LUA_TBOOLEAN:
            return lua_toboolean(m_state, index) != 0;
        case LUA_TNUMBER:
            return readNumber(index);
        case LUA_TSTRING:
            return readText(index, path);
        case LUA_TTABLE:
            return readTable(index, path, depth);
        default:
            throw KVKLuaValueError(QStringLiteral("%1 is a %2, which cannot be passed on")
                                       .arg(path, QLatin1String(luaL_typename(m_state, index))));
        }
    }

    platform::Dictionary readDictionary(int index, const QString &path, int depth)
    {
        enter(path, depth);
        const int table = lua_absindex(m_state, index);
        platform::Dictionary dictionary;
        lua_pushnil(m_state);
        while (lua_next(m_state, table) != 0) {
            const QString key = readKey(path);
            dictionary.insert(key, read(-1, path + QLatin1Char('.') + key, depth + 1));
            lua_pop(m_state, 1);
        }
        return dictionary;
    }

private:
    void enter(const QString &path, int depth)
    {
        // A table that contains itself is nested without end.
        if (depth > DeepestNesting || lua_checkstack(m_state, SlotsPerLevel) == 0) {
            throw KVKLuaValueError(
                QStringLiteral("%1 is nested too deep, or contains itself").arg(path.left(120)));
        }
    }

    platform::Value readNumber(int index)
    {
        if (lua_isinteger(m_state, index))
            return static_cast<qlonglong>(lua_tointeger(m_state, index));
        return static_cast<double>(lua_tonumber(m_state, index));
    }

    QString readText(int index, const QString &path)
    {
        std::size_t length = 0;
        const char *bytes = lua_tolstring(m_state, index, &length);
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString text = decoder(QByteArrayView(bytes, static_cast<qsizetype>(length)));
        if (decoder.hasError())
            throw KVKLuaValueError(QStringLiteral("%1 is a text that is not valid UTF-8").arg(path));
        return text;
    }

    /// The key below the top of the stack, read without changing it.
    QString readKey(const QString &path)
    {
        switch (lua_type(m_state, -2)) {
        case LUA_TSTRING:
            return readText(-2, path + QStringLiteral(": a key"));
        case LUA_TNUMBER:
            return platform::description(readNumber(-2));
        default:
            throw KVKLuaValueError(QStringLiteral("%1 has a key that is a %2; keys are texts or numbers")
                                       .arg(path, QLatin1String(luaL_typename(m_state, -2))));
        }
    }

    /// Whether the keys are exactly 1 to n; an empty table counts as such.
    bool isSequence(int table)
    {
        const auto length = static_cast<lua_Integer>(lua_rawlen(m_state, table));
        lua_Integer keys = 0;
        bool whole = true;
        lua_pushnil(m_state);
        while (lua_next(m_state, table) != 0) {
            lua_pop(m_state, 1);
            const bool counts = lua_isinteger(m_state, -1) && lua_tointeger(m_state, -1) >= 1 &&
                                lua_tointeger(m_state, -1) <= length;
            whole = whole && counts;
            ++keys;
        }
        return whole && keys == length;
    }

    platform::Value readTable(int index, const QString &path, int depth)
    {
        enter(path, depth);
        const int table = lua_absindex(m_state, index);
        if (!isSequence(table))
            return readDictionary(table, path, depth);
        platform::Array array;
        const auto length = static_cast<lua_Integer>(lua_rawlen(m_state, table));
        for (lua_Integer i = 1; i <= length; ++i) {
            lua_rawgeti(m_state, table, i);
            array.append(read(-1, QStringLiteral("%1[%2]").arg(path).arg(i), depth + 1));
            lua_pop(m_state, 1);
        }
        return array;
    }

    lua_State *m_state;
};

/// Puts the stack back to its height, also when an exception leaves.
class StackKeeper
{
public:
    explicit StackKeeper(lua_State *state)
        : m_state(state)
        , m_top(lua_gettop(state))
    {}
    ~StackKeeper() { lua_settop(m_state, m_top); }
    StackKeeper(const StackKeeper &) = delete;
    StackKeeper &operator=(const StackKeeper &) = delete;

private:
    lua_State *m_state;
    int m_top;
};

void pushText(lua_State *state, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    lua_pushlstring(state, bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

} // namespace

platform::Value KVKLuaToValue(lua_State *state, int index, const QString &path)
{
    const int absolute = lua_absindex(state, index);
    const StackKeeper keeper(state);
    return Reader(state).read(absolute, path, 0);
}

platform::Dictionary KVKLuaToDictionary(lua_State *state, int index, const QString &path)
{
    const int absolute = lua_absindex(state, index);
    const StackKeeper keeper(state);
    return Reader(state).readDictionary(absolute, path, 0);
}

void KVKLuaPush(lua_State *state, const platform::Value &value)
{
    luaL_checkstack(state, SlotsPerLevel, "a result is nested too deep");
    if (!value.isValid()) {
        lua_pushnil(state);
    } else if (value.metaType() == QMetaType::fromType<bool>()) {
        lua_pushboolean(state, value.toBool() ? 1 : 0);
    } else if (value.metaType() == QMetaType::fromType<double>() ||
               value.metaType() == QMetaType::fromType<float>()) {
        lua_pushnumber(state, value.toDouble());
    } else if (platform::isNumber(value)) {
        lua_pushinteger(state, value.toLongLong());
    } else if (platform::isArray(value) || value.metaType() == QMetaType::fromType<QStringList>()) {
        lua_newtable(state);
        lua_Integer i = 0;
        for (const platform::Value &element : value.toList()) {
            KVKLuaPush(state, element);
            lua_rawseti(state, -2, ++i);
        }
    } else if (platform::isDictionary(value)) {
        const platform::Dictionary dictionary = value.toMap();
        lua_newtable(state);
        for (auto entry = dictionary.cbegin(); entry != dictionary.cend(); ++entry) {
            pushText(state, entry.key());
            KVKLuaPush(state, entry.value());
            lua_rawset(state, -3);
        }
    } else {
        pushText(state, platform::description(value));
    }
}

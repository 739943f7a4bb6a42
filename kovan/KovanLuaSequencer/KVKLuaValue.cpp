#include "kovan/KovanLuaSequencer/KVKLuaValue.h"

#include "kovan/KovanLuaSequencer/KVKCallRules.h"
#include "kovan/KovanLuaSequencer/KVKLuaProtection.h"

#include <QStringDecoder>

#include <lua.hpp>

#include <algorithm>
#include <vector>

namespace {

constexpr int DeepestNesting = 64;
constexpr int DeepestResult = 200;
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
            throw KVKLuaValueError(KVKProblemOfValue(path, QLatin1String(luaL_typename(m_state, index))));
        }
    }

    platform::Dictionary readDictionary(int index, const QString &path, int depth,
                                        const KVKLuaTakeFunction &taken = {})
    {
        enter(path, depth);
        const int table = lua_absindex(m_state, index);
        platform::Dictionary dictionary;
        lua_pushnil(m_state);
        while (lua_next(m_state, table) != 0) {
            const QString key = readKey(path);
            const QString place = path + QLatin1Char('.') + key;
            // In Lua 1 and "1" are two keys. One of the values would be lost, and nobody could say which.
            if (dictionary.contains(key)) {
                throw KVKLuaValueError(
                    QStringLiteral("%1 has the key '%2' twice, as a number and as a text").arg(path, key));
            }
            platform::Value value;
            if (taken && lua_isfunction(m_state, -1))
                value = taken(key, place);
            dictionary.insert(key, value.isValid() ? value : read(-1, place, depth + 1));
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
        // A mark of the byte order at the beginning is a character as any other.
        QStringDecoder decoder(QStringDecoder::Utf8,
                               QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
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
            array.append(read(-1, QStringLiteral("%1[%2]").arg(path, QString::number(i)), depth + 1));
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

/// One step of building a Lua value on the stack.
struct Step
{
    enum class Kind { Nil, Boolean, Integer, Number, Text, Table, Element, Entry };

    Kind kind = Kind::Nil;
    lua_Integer integer = 0; ///< Also a boolean, and the place of an element.
    lua_Number number = 0.0;
    QByteArray text = {};
};

/// What has to be pushed, worked out beforehand: while Lua allocates, and may jump away for want of memory,
/// no C++ object is made.
class Plan
{
public:
    explicit Plan(const platform::Value &value) { add(value, 0); }

    /// Puts the value onto the stack. Raises a Lua error when that cannot be done.
    void pushTo(lua_State *state) const
    {
        luaL_checkstack(state, m_slots, "a result is nested too deep");
        for (const Step &step : m_steps)
            perform(state, step);
    }

private:
    void add(const platform::Value &value, int depth)
    {
        if (depth > DeepestResult)
            throw KVKLuaValueError(QStringLiteral("a result is nested too deep"));
        m_slots = std::max(m_slots, SlotsPerLevel * (depth + 1));
        if (!value.isValid()) {
            m_steps.push_back({});
        } else if (value.metaType() == QMetaType::fromType<bool>()) {
            m_steps.push_back({Step::Kind::Boolean, value.toBool() ? 1 : 0});
        } else if (value.metaType() == QMetaType::fromType<double>() ||
                   value.metaType() == QMetaType::fromType<float>()) {
            m_steps.push_back({Step::Kind::Number, 0, value.toDouble()});
        } else if (platform::isNumber(value)) {
            m_steps.push_back({Step::Kind::Integer, value.toLongLong()});
        } else if (platform::isArray(value) || value.metaType() == QMetaType::fromType<QStringList>()) {
            addArray(value.toList(), depth);
        } else if (platform::isDictionary(value)) {
            addDictionary(value.toMap(), depth);
        } else {
            addText(platform::description(value));
        }
    }

    void addText(const QString &text) { m_steps.push_back({Step::Kind::Text, 0, 0.0, text.toUtf8()}); }

    void addArray(const platform::Array &array, int depth)
    {
        m_steps.push_back({Step::Kind::Table});
        for (qsizetype i = 0; i < array.size(); ++i) {
            add(array.at(i), depth + 1);
            m_steps.push_back({Step::Kind::Element, i + 1});
        }
    }

    void addDictionary(const platform::Dictionary &dictionary, int depth)
    {
        m_steps.push_back({Step::Kind::Table});
        for (auto entry = dictionary.cbegin(); entry != dictionary.cend(); ++entry) {
            addText(entry.key());
            add(entry.value(), depth + 1);
            m_steps.push_back({Step::Kind::Entry});
        }
    }

    static void perform(lua_State *state, const Step &step)
    {
        switch (step.kind) {
        case Step::Kind::Nil:
            return lua_pushnil(state);
        case Step::Kind::Boolean:
            return lua_pushboolean(state, step.integer != 0 ? 1 : 0);
        case Step::Kind::Integer:
            return lua_pushinteger(state, step.integer);
        case Step::Kind::Number:
            return lua_pushnumber(state, step.number);
        case Step::Kind::Text:
            lua_pushlstring(state, step.text.constData(), static_cast<std::size_t>(step.text.size()));
            return;
        case Step::Kind::Table:
            return lua_newtable(state);
        case Step::Kind::Element:
            return lua_rawseti(state, -2, step.integer);
        case Step::Kind::Entry:
            return lua_rawset(state, -3);
        }
    }

    std::vector<Step> m_steps;
    int m_slots = SlotsPerLevel;
};

int pushPlan(lua_State *state)
{
    static_cast<const Plan *>(lua_touserdata(state, 1))->pushTo(state);
    return 1;
}

} // namespace

platform::Value KVKLuaToValue(lua_State *state, int index, const QString &path)
{
    const int absolute = lua_absindex(state, index);
    const StackKeeper keeper(state);
    return Reader(state).read(absolute, path, 0);
}

platform::Dictionary KVKLuaToDictionary(lua_State *state, int index, const QString &path,
                                        const KVKLuaTakeFunction &taken)
{
    const int absolute = lua_absindex(state, index);
    const StackKeeper keeper(state);
    return Reader(state).readDictionary(absolute, path, 0, taken);
}

void KVKLuaPush(lua_State *state, const platform::Value &value)
{
    Plan plan(value);
    if (KVKLuaProtected(state, pushPlan, &plan, 1))
        return;
    const QString why = KVKLuaTextOnTop(state);
    lua_pop(state, 1);
    throw KVKLuaValueError(why);
}

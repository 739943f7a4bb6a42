#include "kovan/KovanLuaSequencer/KVKLuaValue.h"

#include <lua.hpp>

#include <optional>

#include "fuzz/Target.h"
#include "fuzz/Values.h"

using platform::Dictionary;
using platform::Value;

namespace {

using fuzz::Input;
using fuzz::must;
using State = std::unique_ptr<lua_State, decltype(&lua_close)>;

int doNothing(lua_State *)
{
    return 0;
}

void push(lua_State *state, Input &input, int depth);

/// A key that Lua takes: neither nil nor not-a-number.
void pushKey(lua_State *state, Input &input, int position)
{
    switch (input.below(6)) {
    case 0:
    case 1:
        return lua_pushinteger(state, position);
    case 2: {
        const QByteArray text = input.someBytes();
        lua_pushlstring(state, text.constData(), static_cast<std::size_t>(text.size()));
        return;
    }
    case 3: {
        const double number = input.decimal();
        return lua_pushnumber(state, number == number ? number : 0.0);
    }
    case 4:
        lua_pushstring(state, QByteArray::number(position).constData());
        return;
    default:
        return input.below(8) == 0 ? lua_pushboolean(state, 1) : lua_pushinteger(state, input.integer());
    }
}

void pushTable(lua_State *state, Input &input, int depth)
{
    lua_newtable(state);
    const int table = lua_gettop(state);
    const int entries = input.below(8);
    for (int i = 1; i <= entries; ++i) {
        pushKey(state, input, i);
        // Now and then a table that holds itself.
        if (input.below(64) == 63)
            lua_pushvalue(state, table);
        else
            push(state, input, depth + 1);
        lua_rawset(state, table);
    }
}

void pushNested(lua_State *state, Input &input)
{
    push(state, input, 100);
    for (int left = input.byte(); left > 0; --left) {
        lua_createtable(state, 1, 0);
        lua_rotate(state, -2, 1);
        lua_rawseti(state, -2, 1);
    }
}

void push(lua_State *state, Input &input, int depth)
{
    constexpr int Deepest = 8;
    switch (input.below(depth < Deepest ? 12 : 6)) {
    case 0:
        return lua_pushinteger(state, input.integer());
    case 1:
        return lua_pushnumber(state, input.decimal());
    case 2:
        return lua_pushboolean(state, input.truth() ? 1 : 0);
    case 3: {
        const QByteArray text = input.someBytes();
        lua_pushlstring(state, text.constData(), static_cast<std::size_t>(text.size()));
        return;
    }
    case 4:
        return lua_pushnil(state);
    case 5:
        lua_pushstring(state, "S1");
        return;
    case 6:
        return input.below(4) == 0 ? lua_pushcfunction(state, doNothing) : lua_pushinteger(state, 1);
    case 7:
        if (input.below(8) == 0)
            return pushNested(state, input);
        [[fallthrough]];
    default:
        return pushTable(state, input, depth);
    }
}

std::optional<Value> read(lua_State *state)
{
    const int top = lua_gettop(state);
    std::optional<Value> value;
    try {
        value = KVKLuaToValue(state, -1, QStringLiteral("it"));
    } catch (const KVKLuaValueError &refusal) {
        must(QByteArray(refusal.what()).startsWith("it"), "a refusal names the value", refusal.what());
    }
    must(lua_gettop(state) == top, "the stack is left as it was");
    return value;
}

/// The keys of the table on the top.
qsizetype countKeys(lua_State *state)
{
    qsizetype count = 0;
    for (lua_pushnil(state); lua_next(state, -2) != 0; lua_pop(state, 1))
        ++count;
    return count;
}

/// No entry is lost: neither of the table itself nor of those in it.
void holdsAllEntries(lua_State *state, const Value &value)
{
    if (!lua_istable(state, -1))
        return;
    const qsizetype entries = platform::isArray(value) ? value.toList().size() : value.toMap().size();
    must(entries == countKeys(state), "every entry of a table is read", platform::description(value));
}

/// What was read is pushed and read again: the same value. An empty dictionary cannot come from a Lua value.
void comesBack(lua_State *state, const Value &value)
{
    KVKLuaPush(state, value);
    const std::optional<Value> again = read(state);
    must(again.has_value(), "what was read can be read again", platform::description(value));
    must(fuzz::areSame(*again, value), "what was read comes back the same",
         platform::description(value) + '\n' + platform::description(*again));
    const bool isPlain = !lua_istable(state, -1) && lua_rawequal(state, -1, -1) != 0;
    must(!isPlain || lua_rawequal(state, -1, -2) != 0, "in Lua it is what it was",
         platform::description(value));
    lua_pop(state, 1);
}

void dictionaryIsTheSame(lua_State *state, const Value &value)
{
    if (!lua_istable(state, -1))
        return;
    const int top = lua_gettop(state);
    const Dictionary dictionary = KVKLuaToDictionary(state, -1, QStringLiteral("it"));
    must(lua_gettop(state) == top, "the stack is left as it was");
    if (platform::isDictionary(value))
        return must(fuzz::areSame(dictionary, value), "both ways to read a dictionary agree",
                    platform::description(value));
    const platform::Array list = value.toList();
    must(dictionary.size() == list.size(), "a list has its numbers as keys", platform::description(value));
    for (qsizetype i = 0; i < list.size(); ++i)
        must(fuzz::areSame(dictionary.value(QString::number(i + 1)), list.at(i)), "each under its number");
}

class LuaValuesTarget : public fuzz::Target
{
public:
    void feed(Input input) override
    {
        const State state(luaL_newstate(), &lua_close);
        push(state.get(), input, 0);
        if (const std::optional<Value> value = read(state.get())) {
            holdsAllEntries(state.get(), *value);
            dictionaryIsTheSame(state.get(), *value);
            comesBack(state.get(), *value);
        }
        lua_settop(state.get(), 0);
        // Any value of the platform can be pushed, though nothing in a list or a dictionary is lost on the
        // way.
        KVKLuaPush(state.get(), fuzz::valueFrom(input, 4));
        must(lua_gettop(state.get()) == 1, "one value is pushed");
        must(read(state.get()).has_value(), "what was pushed can be read");
    }
};

} // namespace

std::unique_ptr<fuzz::Target> fuzz::makeTarget()
{
    return std::make_unique<LuaValuesTarget>();
}

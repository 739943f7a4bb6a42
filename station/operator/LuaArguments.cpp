#include "station/operator/LuaArguments.h"

#include "station/operator/OperatorFailure.h"

#include <lua.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace station {
namespace {

constexpr const char *TargetForms =
    "an identifier or a table {panel=..., title=...}, {panel=..., slot=...} or {panel=..., switch=...}";

bool isText(lua_State *state, int index)
{
    return lua_type(state, index) == LUA_TSTRING || lua_type(state, index) == LUA_TNUMBER;
}

/// As Lua itself would write it. Lua's own conversion takes memory, and may raise an error for want of it.
QString numberAsText(lua_State *state, int index)
{
    if (lua_isinteger(state, index))
        return QString::number(lua_tointeger(state, index));
    // Not by Qt, which writes no sign before a zero. Fourteen digits, as LUA_NUMBER_FMT has them.
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), lua_tonumber(state, index),
                                   std::chars_format::general, 14)
                         .ptr;
    const QString text = QString::fromLatin1(digits.data(), end - digits.data());
    const bool looksWhole = std::all_of(text.cbegin(), text.cend(), [](QChar character) {
        return character == QLatin1Char('-') || character.isDigit();
    });
    return looksWhole ? text + QLatin1String(".0") : text;
}

} // namespace

void LuaArguments::fail(int position, const char *name, const char *expected) const
{
    throw OperatorFailure(QStringLiteral("%1: argument %2 (%3) must be %4, not %5")
                              .arg(QString::fromLatin1(m_function), QString::number(position),
                                   QString::fromLatin1(name), QString::fromLatin1(expected),
                                   QString::fromLatin1(lua_typename(m_state, lua_type(m_state, position)))));
}

QString LuaArguments::textAt(int index) const
{
    if (lua_type(m_state, index) == LUA_TNUMBER)
        return numberAsText(m_state, index);
    std::size_t length = 0;
    const char *bytes = lua_tolstring(m_state, index, &length);
    return QString::fromUtf8(bytes, static_cast<qsizetype>(length));
}

QString LuaArguments::text(int position, const char *name) const
{
    if (!isText(m_state, position))
        fail(position, name, "a text");
    return textAt(position);
}

std::optional<QString> LuaArguments::optionalText(int position, const char *name) const
{
    if (lua_isnoneornil(m_state, position))
        return std::nullopt;
    return text(position, name);
}

double LuaArguments::number(int position, const char *name) const
{
    if (lua_type(m_state, position) != LUA_TNUMBER)
        fail(position, name, "a number");
    return lua_tonumber(m_state, position);
}

qint64 LuaArguments::integer(int position, const char *name, std::optional<qint64> absent) const
{
    if (absent && lua_isnoneornil(m_state, position))
        return *absent;
    int isInteger = 0;
    const lua_Integer value = lua_tointegerx(m_state, position, &isInteger);
    if (lua_type(m_state, position) != LUA_TNUMBER || isInteger == 0)
        fail(position, name, "a whole number");
    return value;
}

bool LuaArguments::truth(int position) const
{
    return lua_toboolean(m_state, position) != 0;
}

std::optional<QString> LuaArguments::field(int table, const char *key) const
{
    // Searched, since looking the key up would make a Lua text of it, which takes memory.
    std::optional<QString> value;
    lua_pushnil(m_state);
    while (lua_next(m_state, table) != 0) {
        const bool found =
            lua_type(m_state, -2) == LUA_TSTRING && std::strcmp(lua_tostring(m_state, -2), key) == 0;
        if (found && isText(m_state, -1))
            value = textAt(-1);
        lua_pop(m_state, 1);
    }
    return value;
}

ClickTarget LuaArguments::target(int position) const
{
    using Kind = ClickTarget::Kind;
    if (isText(m_state, position))
        return {Kind::Identifier, {}, textAt(position)};
    if (lua_type(m_state, position) != LUA_TTABLE)
        fail(position, "target", TargetForms);
    const std::optional<QString> panel = field(position, "panel");
    const std::array<std::pair<const char *, Kind>, 3> names{
        {{"title", Kind::Title}, {"slot", Kind::Slot}, {"switch", Kind::Switch}}};
    std::optional<ClickTarget> target;
    for (const auto &[key, kind] : names) {
        const std::optional<QString> name = field(position, key);
        if (name && target)
            fail(position, "target", TargetForms);
        if (name)
            target = ClickTarget{kind, panel.value_or(QString()), *name};
    }
    if (!panel || !target)
        fail(position, "target", TargetForms);
    return *target;
}

} // namespace station

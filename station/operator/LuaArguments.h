#pragma once

#include "station/operator/ClickTarget.h"

#include <QString>

#include <optional>

struct lua_State;

namespace station {

/// Reads the arguments of a script's call.
///
/// Thread: the script's. Errors: throws OperatorFailure with the function's and the argument's name; never
/// raises a Lua error, so C++ objects may live beside it.
class LuaArguments
{
public:
    LuaArguments(lua_State *state, const char *function)
        : m_state(state)
        , m_function(function)
    {}

    /// A text, or a number as text.
    [[nodiscard]] QString text(int position, const char *name) const;
    [[nodiscard]] std::optional<QString> optionalText(int position, const char *name) const;
    [[nodiscard]] double number(int position, const char *name) const;
    [[nodiscard]] qint64 integer(int position, const char *name,
                                 std::optional<qint64> absent = std::nullopt) const;
    [[nodiscard]] bool truth(int position) const;
    [[nodiscard]] ClickTarget target(int position) const;

private:
    [[noreturn]] void fail(int position, const char *name, const char *expected) const;
    [[nodiscard]] std::optional<QString> field(int table, const char *key) const;
    [[nodiscard]] QString textAt(int index) const;

    lua_State *m_state;
    const char *m_function;
};

} // namespace station

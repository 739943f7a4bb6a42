#pragma once

#include <QByteArray>

#include <optional>

namespace station {

/// How strongly an operator binds to its left and to its right; see "Precedence" in Lua's manual.
struct LuaBinding
{
    int left;
    int right;
};

/// Nothing for what is no binary operator. Thread: any.
[[nodiscard]] std::optional<LuaBinding> bindingOfBinary(const QByteArray &symbol);
/// How strongly the unary operators bind to their operand.
inline constexpr int BindingOfUnary = 12;

} // namespace station

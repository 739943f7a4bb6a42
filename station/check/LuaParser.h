#pragma once

#include "station/check/LuaSyntax.h"

#include <memory>

namespace station {

/// Reads a Lua 5.4 script that Lua itself has accepted: what it does not have to refuse, it does not refuse.
/// Names are resolved: an expression that names a local points to it.
///
/// Thread: any. Errors: throws LuaSyntaxError where an expression is too deep to be looked at.
[[nodiscard]] std::unique_ptr<LuaTree> parseLua(const QByteArray &script);

} // namespace station

#pragma once

namespace baseline {

/// Has a new Lua state on a new thread call a C function so often, which returns a table of two fields, and
/// returns how often it was called.
[[nodiscard]] int callFromLua(int times);

} // namespace baseline

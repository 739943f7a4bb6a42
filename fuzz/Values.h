#pragma once

#include "platform/Value.h"

#include "fuzz/Input.h"

namespace fuzz {

/// Any value that crosses the border between Lua, the host and the plug-in; lists and dictionaries are nested
/// no deeper than `depth`.
[[nodiscard]] platform::Value valueFrom(Input &input, int depth);

/// Whether the values are of the same kinds throughout and hold the same; not-a-number counts as itself.
[[nodiscard]] bool areSame(const platform::Value &a, const platform::Value &b);

} // namespace fuzz

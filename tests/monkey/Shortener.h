#pragma once

#include "tests/monkey/Step.h"

#include <functional>

namespace monkey {

/// Whether something breaks when these steps are done from the beginning.
using Breaks = std::function<bool(const Steps &)>;

/// The fewest of the steps, in their order, that still break something: none of those that are left can be
/// left out by itself, nor one of the calls that are made in one moment. Tries at most so often, and is left
/// with more steps then.
///
/// Requires: all of them break something.
[[nodiscard]] Steps shortened(Steps steps, const Breaks &breaks, int mostTries = 2000);

} // namespace monkey

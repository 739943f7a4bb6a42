#pragma once

#include "tests/monkey/Dice.h"
#include "tests/monkey/Model.h"

namespace monkey {

/// A station of one to three groups with one to six slots.
[[nodiscard]] Shape randomShape(Dice &dice);
/// A call that a sequence may make, rightly or wrongly.
[[nodiscard]] Request randomRequest(Dice &dice, const Shape &shape);

} // namespace monkey

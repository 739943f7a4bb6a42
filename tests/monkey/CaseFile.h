#pragma once

#include "tests/monkey/Model.h"
#include "tests/monkey/Step.h"

#include <QString>

namespace monkey {

/// A station and what was done at it, as a file: a line with groups and slots, then a line for each step;
/// empty lines and those that begin with # are for the reader.
struct Case
{
    Shape shape;
    Steps steps;

    /// As it stands in a file.
    [[nodiscard]] QString text() const;
    /// Without a step when the text is none of these.
    [[nodiscard]] static Case fromText(const QString &text);
};

/// G1, G2, … and S1, S2, …
[[nodiscard]] Shape shapeOf(int groups, int slotsPerGroup);

} // namespace monkey

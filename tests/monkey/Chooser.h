#pragma once

#include "tests/monkey/Dice.h"
#include "tests/monkey/Step.h"
#include "tests/monkey/World.h"

#include <QStringList>

namespace monkey {

/// Makes up what sequences call and what an operator does next, from chance and from what can be seen.
///
/// Thread: the main thread. Requires: the world outlives it.
class Chooser
{
public:
    Chooser(const World &world, quint64 seed);

    /// The same for the same seed and number, as long as the station shows the same.
    [[nodiscard]] Step next(int number);

private:
    [[nodiscard]] Step calls(Dice &dice) const;
    [[nodiscard]] Step act(Dice &dice);
    [[nodiscard]] Step scan(Dice &dice);
    [[nodiscard]] Step press(Dice &dice, bool andScan);
    [[nodiscard]] Step clickField(Dice &dice) const;
    [[nodiscard]] Step flip(Dice &dice, bool andScan);
    [[nodiscard]] Step resize(Dice &dice) const;

    [[nodiscard]] const Call *callWithFocus() const;
    [[nodiscard]] QString newText(qint64 length);
    [[nodiscard]] QString newNumber(Dice &dice, const platform::Dictionary &rule);
    [[nodiscard]] QString fittingText(Dice &dice);
    [[nodiscard]] qint64 wantedLength() const;

    const World &m_world;
    quint64 m_seed;
    int m_texts = 0;
    QStringList m_scanned;
};

} // namespace monkey

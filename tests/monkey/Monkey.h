#pragma once

#include "tests/monkey/Operator.h"
#include "tests/monkey/World.h"

#include <QStringList>

namespace monkey {

/// Sequences that call whatever they like, and an operator who does whatever comes to mind, step by step;
/// after each step everything comes to rest, and what was promised is looked at.
///
/// Thread: the main thread. Requires: the world outlives it.
class Monkey
{
public:
    Monkey(World &world, quint64 seed);

    /// Does the steps, and then answers what is left. What broke, in words; empty when nothing did.
    [[nodiscard]] QString run(int steps);
    /// The last things done, one a line.
    [[nodiscard]] QString lastSteps() const;

private:
    void doStep(int step);
    void makeCalls(Dice &dice);
    void answerEverything();
    void note(const QString &words);

    World &m_world;
    quint64 m_seed;
    QStringList m_diary;
    Operator m_operator;
};

} // namespace monkey

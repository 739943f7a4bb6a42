#pragma once

#include "tests/monkey/Chooser.h"
#include "tests/monkey/Operator.h"
#include "tests/monkey/Step.h"
#include "tests/monkey/World.h"

#include <QString>

namespace monkey {

/// Sequences that call and an operator who acts, step by step, by chance or by a list; after each step
/// everything comes to rest, and what was promised is looked at.
///
/// Thread: the main thread. Requires: the world outlives it.
class Monkey
{
public:
    explicit Monkey(World &world);

    /// Does so many steps as they come by chance, and then answers what is left. What broke, in words; empty
    /// when nothing did.
    [[nodiscard]] QString run(quint64 seed, int steps);
    /// Does these steps, and then answers what is left.
    [[nodiscard]] QString replay(const Steps &steps);
    /// The steps that were done.
    [[nodiscard]] const Steps &done() const { return m_done; }

private:
    template <class Deeds>
    [[nodiscard]] QString whatBreaks(const Deeds &deeds);
    void doStep(const Step &step);
    void makeCalls(const Step &step);
    void answerEverything();

    World &m_world;
    Steps m_done;
    Operator m_operator;
};

} // namespace monkey

#pragma once

#include <QtGlobal>

#include <random>

namespace monkey {

/// Chance that can be repeated: the same seed and step give the same throws, whatever was thrown in other
/// steps.
class Dice
{
public:
    Dice(quint64 seed, quint64 step)
        : m_engine(seed * Spread + step)
    {}

    /// 0 to sides - 1. Requires: sides is not 0.
    [[nodiscard]] int below(qsizetype sides)
    {
        return static_cast<int>(m_engine() % static_cast<quint64>(sides));
    }
    [[nodiscard]] bool oneIn(int sides) { return below(sides) == 0; }
    /// Requires: the list is not empty.
    template <class List>
    [[nodiscard]] auto pick(const List &list)
    {
        return *(list.begin() + below(static_cast<qsizetype>(list.size())));
    }

private:
    /// Keeps the steps of neighbouring seeds apart.
    static constexpr quint64 Spread = 1'000'003;

    std::mt19937_64 m_engine;
};

} // namespace monkey

#pragma once

#include "station/base/StationError.h"

#include <QStringList>

namespace station {

/// What becomes of the refusals of a configuration: the first one ends the reading, or all are collected.
///
/// Thread: that of its use.
class Refusals
{
public:
    /// Nothing is collected: a refusal goes through.
    Refusals() = default;
    explicit Refusals(QStringList &collected)
        : m_collected(&collected)
    {}

    /// Does a step of the reading, and whatever does not depend on it may go on. Returns whether it was done.
    template <class Step>
    bool attempt(const Step &step) const
    {
        if (!m_collected) {
            step();
            return true;
        }
        try {
            step();
            return true;
        } catch (const StationError &refusal) {
            m_collected->append(refusal.text());
            return false;
        }
    }

    /// Whether any was collected.
    [[nodiscard]] bool haveAny() const { return m_collected && !m_collected->isEmpty(); }

private:
    QStringList *m_collected = nullptr;
};

} // namespace station

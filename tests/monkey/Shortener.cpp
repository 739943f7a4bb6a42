#include "tests/monkey/Shortener.h"

#include <algorithm>
#include <utility>

namespace monkey {
namespace {

const QString Calls = QStringLiteral("calls");

/// Counts the tries, so that shortening ends also where each takes long.
class Trial
{
public:
    Trial(const Breaks &breaks, int mostTries)
        : m_breaks(breaks)
        , m_left(mostTries)
    {}
    [[nodiscard]] bool breaks(const Steps &steps) { return m_left-- > 0 && m_breaks(steps); }
    [[nodiscard]] bool isOver() const { return m_left <= 0; }

private:
    const Breaks &m_breaks;
    int m_left;
};

Steps without(const Steps &steps, qsizetype from, qsizetype count)
{
    Steps left = steps;
    left.remove(from, std::min(count, left.size() - from));
    return left;
}

/// Leaves out one part after the other, each so many steps long; whether any could be.
bool leaveOutParts(Steps &steps, qsizetype length, Trial &trial)
{
    bool isShorter = false;
    // From the end: what comes late is most often of no matter for what comes before it.
    for (qsizetype from = steps.size() - length; from > -length && !trial.isOver(); from -= length) {
        const qsizetype begin = std::max<qsizetype>(from, 0);
        Steps left = without(steps, begin, length + std::min<qsizetype>(from, 0));
        if (left.size() < steps.size() && trial.breaks(left)) {
            steps = std::move(left);
            isShorter = true;
        }
    }
    return isShorter;
}

/// Leaves single calls out of those that are made in one moment; whether any could be.
bool leaveOutCalls(Steps &steps, Trial &trial)
{
    bool isShorter = false;
    for (qsizetype at = 0; at < steps.size(); ++at) {
        for (qsizetype call = steps.at(at).with.value(Calls).toList().size() - 1; call >= 0; --call) {
            platform::Array calls = steps.at(at).with.value(Calls).toList();
            if (calls.size() < 2)
                break;
            calls.removeAt(call);
            Steps left = steps;
            left[at].with.insert(Calls, calls);
            if (!trial.breaks(left))
                continue;
            steps = std::move(left);
            isShorter = true;
        }
    }
    return isShorter;
}

} // namespace

Steps shortened(Steps steps, const Breaks &breaks, int mostTries)
{
    Trial trial(breaks, mostTries);
    qsizetype length = std::max<qsizetype>(steps.size() / 2, 1);
    for (;;) {
        const bool isShorter = leaveOutParts(steps, length, trial);
        if (length > 1)
            length = std::max<qsizetype>(length / 2, 1);
        else if (!isShorter && !leaveOutCalls(steps, trial))
            return steps;
        if (trial.isOver())
            return steps;
    }
}

} // namespace monkey

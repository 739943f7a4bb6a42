#pragma once

#include <QList>

namespace station {

/// Tells a station that waits for an answer from one that is busy with short calls: it waits when each look
/// finds the same calls under way, for as many looks as make five seconds.
///
/// Thread: a plain value.
class IdleWatch
{
public:
    static constexpr int Looks = 10;

    /// Takes what is under way now, by number (none when a sequence is in no call). Returns whether it was
    /// the same at each of the last looks.
    [[nodiscard]] bool look(const QList<quint64> &calls)
    {
        m_repeats = !calls.isEmpty() && calls == m_calls ? m_repeats + 1 : 0;
        m_calls = calls;
        return m_repeats >= Looks;
    }

private:
    QList<quint64> m_calls;
    int m_repeats = 0;
};

} // namespace station

#pragma once

#include <algorithm>
#include <chrono>

namespace station {

/// How long to wait before something that failed is tried again: twice as long each time, up to a limit.
///
/// Thread: a plain value.
class Backoff
{
public:
    using Duration = std::chrono::milliseconds;

    Backoff(Duration first, Duration most)
        : m_first(first)
        , m_most(most)
        , m_next(first)
    {}

    [[nodiscard]] Duration next()
    {
        const Duration now = m_next;
        m_next = std::min(m_next * 2, m_most);
        return now;
    }
    /// It has worked: the next failure begins anew.
    void reset() { m_next = m_first; }

private:
    Duration m_first;
    Duration m_most;
    Duration m_next;
};

} // namespace station

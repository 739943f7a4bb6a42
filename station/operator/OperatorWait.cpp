#include "station/operator/OperatorWait.h"

#include "platform/MainQueue.h"
#include "station/operator/OperatorFailure.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace station {
namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// A day is as good as for ever, and still within what the clock can count.
constexpr double LongestWait = 86400.0;
constexpr Seconds FirstPause{0.001};
constexpr Seconds LongestPause{0.016};

Clock::time_point timeAfter(double seconds)
{
    const double limit = std::isnan(seconds) ? 0.0 : std::clamp(seconds, 0.0, LongestWait);
    return Clock::now() + std::chrono::duration_cast<Clock::duration>(Seconds(limit));
}

} // namespace

void OperatorWait::stop()
{
    const std::scoped_lock lock(m_mutex);
    m_stopped = true;
    m_changed.notify_all();
}

bool OperatorWait::isStopped() const
{
    const std::scoped_lock lock(m_mutex);
    return m_stopped;
}

void OperatorWait::sleep(double seconds)
{
    const Clock::time_point end = timeAfter(seconds);
    std::unique_lock lock(m_mutex);
    if (m_changed.wait_until(lock, end, [this] { return m_stopped; }))
        throw OperatorFailure(QStringLiteral("stopped"));
}

bool OperatorWait::until(const std::function<bool()> &condition, double seconds)
{
    const Clock::time_point end = timeAfter(seconds);
    Seconds pause = FirstPause;
    while (!platform::MainQueue::sync(condition)) {
        const double left = Seconds(end - Clock::now()).count();
        if (left <= 0.0)
            return false;
        sleep(std::min(left, pause.count()));
        // Soon at first, since most panels come at once, then at a pace that leaves the main thread to the
        // panels.
        pause = std::min(pause * 2.0, LongestPause);
    }
    return true;
}

} // namespace station

#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>

namespace station {

/// The waits of an operator's script, all of which end when the station stops.
///
/// Thread: sleep() and until() on the script's thread, the others on any.
/// Errors: a wait that is stopped, or begins after that, throws OperatorFailure("stopped").
class OperatorWait
{
public:
    /// Ends the waits.
    void stop();
    [[nodiscard]] bool isStopped() const;

    void sleep(double seconds);
    /// Asks for the condition on the main thread, again and again, until it holds or the time is over; says
    /// which. Asks at least once. An exception from the condition is thrown here.
    [[nodiscard]] bool until(const std::function<bool()> &condition, double seconds);

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_stopped = false;
};

} // namespace station

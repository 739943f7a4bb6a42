#pragma once

#include <QSocketNotifier>

#include <functional>

namespace station {

/// Turns each request to end (Ctrl-C, kill, a terminal that is closed) into a call on the main thread, as
/// soon as its event loop runs.
///
/// A terminal's closing is left alone where it was to be ignored when the program started (nohup).
/// Thread: the main thread. One in a process. Errors: throws std::system_error when the process has no
/// descriptors left.
class StopSignal
{
public:
    explicit StopSignal(const std::function<void()> &handler);
    ~StopSignal();
    StopSignal(const StopSignal &) = delete;
    StopSignal &operator=(const StopSignal &) = delete;

private:
    QSocketNotifier m_arrived;
};

} // namespace station

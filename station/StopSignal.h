#pragma once

#include <QTimer>

#include <functional>

namespace station {

/// Turns an interrupt or a request to terminate (Ctrl-C, kill) into a call on the main thread, once.
///
/// Thread: the main thread. One in a process.
class StopSignal
{
public:
    explicit StopSignal(std::function<void()> handler);
    ~StopSignal();
    StopSignal(const StopSignal &) = delete;
    StopSignal &operator=(const StopSignal &) = delete;

private:
    QTimer m_look;
};

} // namespace station

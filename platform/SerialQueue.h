#pragma once

#include <functional>
#include <memory>

namespace platform {

/// A queue whose jobs run on the global queue's threads one after another, in the order of submission.
///
/// Thread: async() from any; destroyed on any but by one of its own jobs, and before the process's static
/// objects go. An exception must not leave a job. The destructor drops what has not begun and
/// returns when the running job has ended; on the main thread it serves the MainQueue meanwhile, since the
/// job may be waiting for a block there.
class SerialQueue
{
public:
    SerialQueue();
    ~SerialQueue();
    SerialQueue(const SerialQueue &) = delete;
    SerialQueue &operator=(const SerialQueue &) = delete;

    void async(std::function<void()> job);

private:
    struct State;
    static void runNext(const std::shared_ptr<State> &state);
    std::shared_ptr<State> m_state;
};

} // namespace platform

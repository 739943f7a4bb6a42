#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace station {

/// A thread of its own that does jobs one after another, in the order in which they came; what a database's
/// connection belongs to. The destructor returns when all are done.
///
/// Thread: any. Requires: no exception leaves a job; no job waits for another one.
class WriteQueue
{
public:
    WriteQueue();
    ~WriteQueue();
    WriteQueue(const WriteQueue &) = delete;
    WriteQueue &operator=(const WriteQueue &) = delete;

    /// Returns at once.
    void post(std::function<void()> job);
    /// Returns when the job is done.
    void wait(const std::function<void()> &job);

private:
    void work();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::function<void()>> m_jobs;
    bool m_ending = false;
    std::thread m_thread; ///< The last one: it uses the others.
};

} // namespace station

#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

class QThread;

namespace platform {

/// A thread of high priority with a queue of jobs, which run one after another in the order of submission:
/// work that must keep the main thread free because it waits for blocks on it.
///
/// Thread: async() from any; made and destroyed on any but by one of its own jobs. An exception must not
/// leave a job.
class WorkQueue
{
public:
    WorkQueue();
    ~WorkQueue();
    WorkQueue(const WorkQueue &) = delete;
    WorkQueue &operator=(const WorkQueue &) = delete;

    /// Dropped once the queue was ended.
    void async(std::function<void()> job);
    /// Drops what has not begun and returns when the running job has ended; on the main thread it serves the
    /// MainQueue meanwhile, since the job may be waiting for a block there. The destructor does the same.
    void end();

private:
    void work();
    [[nodiscard]] std::function<void()> nextJob();
    [[nodiscard]] bool hasEnded();

    // Jobs are handed over by the standard library's primitives and not by Qt's, so that a thread checker
    // sees it.
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::function<void()>> m_jobs;
    bool m_ending = false;
    bool m_ended = false;
    std::unique_ptr<QThread> m_thread;
};

} // namespace platform

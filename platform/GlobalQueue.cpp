#include "platform/GlobalQueue.h"

#include "platform/MainQueue.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace platform {

namespace {

class Pool
{
public:
    Pool()
    {
        // What is made first goes last: jobs may use the main queue up to their end.
        static_cast<void>(MainQueue::isMainThread());
        constexpr unsigned FewestWorkers = 4;
        const unsigned count = std::max(FewestWorkers, std::thread::hardware_concurrency());
        for (unsigned i = 0; i < count; ++i)
            m_workers.emplace_back([this] { work(); });
    }

    ~Pool()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_ending = true;
        }
        m_changed.notify_all();
        for (std::thread &worker : m_workers)
            worker.join();
    }

    Pool(const Pool &) = delete;
    Pool &operator=(const Pool &) = delete;

    void submit(std::function<void()> job)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_jobs.push_back(std::move(job));
        }
        m_changed.notify_one();
    }

private:
    void work()
    {
        std::unique_lock lock(m_mutex);
        while (true) {
            m_changed.wait(lock, [this] { return m_ending || !m_jobs.empty(); });
            if (m_ending)
                return;
            std::function<void()> job = std::move(m_jobs.front());
            m_jobs.pop_front();
            lock.unlock();
            job();
            // What the job held goes before the lock comes back: it may submit jobs in its turn.
            job = nullptr;
            lock.lock();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::function<void()>> m_jobs;
    bool m_ending = false;
    std::vector<std::thread> m_workers;
};

} // namespace

void GlobalQueue::async(std::function<void()> job)
{
    static Pool pool;
    pool.submit(std::move(job));
}

} // namespace platform

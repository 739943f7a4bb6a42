#include "station/results/WriteQueue.h"

#include <utility>

namespace station {

WriteQueue::WriteQueue()
    : m_thread([this] { work(); })
{}

WriteQueue::~WriteQueue()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void WriteQueue::post(std::function<void()> job)
{
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_changed.notify_all();
}

void WriteQueue::wait(const std::function<void()> &job)
{
    bool done = false;
    post([this, &job, &done] {
        job();
        const std::lock_guard lock(m_mutex);
        done = true;
    });
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&done] { return done; });
}

void WriteQueue::work()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_ending || !m_jobs.empty(); });
        if (m_jobs.empty())
            return;
        const std::function<void()> job = std::move(m_jobs.front());
        m_jobs.pop_front();
        lock.unlock();
        job();
        // Those who wait for a job look after each one.
        m_changed.notify_all();
        lock.lock();
    }
}

} // namespace station

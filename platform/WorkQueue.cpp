#include "platform/WorkQueue.h"

#include "platform/MainQueue.h"

#include <QThread>

#include <utility>

namespace platform {

WorkQueue::WorkQueue()
    : m_thread(QThread::create([this] { work(); }))
{
    // A press that is answered late is noticed by a person. Where the system does not grant the priority, the
    // thread runs with that of the others.
    m_thread->start(QThread::HighPriority);
}

WorkQueue::~WorkQueue()
{
    end();
}

void WorkQueue::end()
{
    std::deque<std::function<void()>> dropped;
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
        // Taken out under the lock and freed behind it: what a job holds may be anything.
        dropped.swap(m_jobs);
        m_changed.notify_all();
    }
    // The job under way may be waiting for the main thread, which is this one.
    if (MainQueue::isMainThread())
        MainQueue::drainUntil([this] { return hasEnded(); });
    m_thread->wait();
}

void WorkQueue::async(std::function<void()> job)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_ending)
            return;
        m_jobs.push_back(std::move(job));
    }
    m_changed.notify_all();
}

/// Waits for a job; none when the queue ends.
std::function<void()> WorkQueue::nextJob()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_ending || !m_jobs.empty(); });
    if (m_ending)
        return {};
    std::function<void()> job = std::move(m_jobs.front());
    m_jobs.pop_front();
    return job;
}

bool WorkQueue::hasEnded()
{
    const std::lock_guard lock(m_mutex);
    return m_ended;
}

void WorkQueue::work()
{
    // What a job holds goes with it, before the next one and without the lock: it may submit jobs in its
    // turn.
    while (const std::function<void()> job = nextJob())
        job();
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
    }
    MainQueue::wake();
}

} // namespace platform

#include "platform/SerialQueue.h"

#include "platform/GlobalQueue.h"
#include "platform/MainQueue.h"

#include <condition_variable>
#include <deque>
#include <mutex>

namespace platform {

struct SerialQueue::State
{
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> jobs;
    bool running = false;

    bool isIdle()
    {
        const std::lock_guard lock(mutex);
        return !running;
    }
};

SerialQueue::SerialQueue()
    : m_state(std::make_shared<State>())
{}

SerialQueue::~SerialQueue()
{
    std::deque<std::function<void()>> dropped;
    {
        const std::lock_guard lock(m_state->mutex);
        dropped.swap(m_state->jobs);
    }
    if (MainQueue::isMainThread()) {
        MainQueue::drainUntil([this] { return m_state->isIdle(); });
        return;
    }
    std::unique_lock lock(m_state->mutex);
    m_state->changed.wait(lock, [this] { return !m_state->running; });
}

void SerialQueue::async(std::function<void()> job)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->jobs.push_back(std::move(job));
    if (m_state->running)
        return;
    m_state->running = true;
    GlobalQueue::async([state = m_state] { runNext(state); });
}

void SerialQueue::runNext(const std::shared_ptr<State> &state)
{
    std::unique_lock lock(state->mutex);
    if (!state->jobs.empty()) {
        std::function<void()> job = std::move(state->jobs.front());
        state->jobs.pop_front();
        lock.unlock();
        job();
        // What the job held goes before the queue counts as idle, and without its lock.
        job = nullptr;
        lock.lock();
    }
    if (!state->jobs.empty()) {
        GlobalQueue::async([state] { runNext(state); });
        return;
    }
    state->running = false;
    state->changed.notify_all();
    lock.unlock();
    MainQueue::wake();
}

} // namespace platform

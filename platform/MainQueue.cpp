#include "platform/MainQueue.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace platform {

namespace {

/// What a thread that waits for its job shares with the main thread.
struct Completion
{
    std::mutex mutex;
    std::condition_variable changed;
    bool done = false;
    std::exception_ptr problem;
};

class Waker;

/// The queue itself. One for the process; it outlives every thread that may still submit a job.
struct Queue
{
    std::mutex mutex;
    std::condition_variable arrived;
    std::deque<MainQueue::Job> jobs;
    bool serving = false;
    bool wakePosted = false;
    std::uint64_t wakes = 0;
    std::thread::id mainThread;
    std::unique_ptr<Waker> waker;
};

Queue &queue()
{
    static Queue instance;
    return instance;
}

/// Runs the jobs that wait when the event loop delivers its event.
class Waker : public QObject
{
public:
    static QEvent::Type eventType()
    {
        static const int type = QEvent::registerEventType();
        return static_cast<QEvent::Type>(type);
    }

    bool event(QEvent *event) override;
};

/// Sees to it that the event loop looks for jobs. Requires: the queue's lock.
void postWake()
{
    if (!queue().serving || queue().wakePosted)
        return;
    queue().wakePosted = true;
    QCoreApplication::postEvent(queue().waker.get(), new QEvent(Waker::eventType()), Qt::HighEventPriority);
}

/// The next job, or none.
MainQueue::Job takeJob()
{
    const std::lock_guard lock(queue().mutex);
    if (queue().jobs.empty())
        return {};
    MainQueue::Job job = std::move(queue().jobs.front());
    queue().jobs.pop_front();
    // The job may run an event loop of its own, and that has to serve those behind it.
    if (!queue().jobs.empty())
        postWake();
    return job;
}

/// The exception of a job has nowhere to go from here; ending at once keeps its place in the report.
void perform(const MainQueue::Job &job) noexcept
{
    job();
}

void runWaitingJobs()
{
    while (const MainQueue::Job job = takeJob())
        perform(job);
}

std::uint64_t wakesSoFar()
{
    const std::lock_guard lock(queue().mutex);
    return queue().wakes;
}

bool Waker::event(QEvent *event)
{
    if (event->type() != eventType())
        return QObject::event(event);
    {
        const std::lock_guard lock(queue().mutex);
        queue().wakePosted = false;
    }
    runWaitingJobs();
    return true;
}

/// Adds a job and sees to it that the main thread looks; false when the queue does not serve.
bool submit(MainQueue::Job job)
{
    const std::lock_guard lock(queue().mutex);
    if (!queue().serving)
        return false;
    queue().jobs.push_back(std::move(job));
    queue().arrived.notify_all();
    postWake();
    return true;
}

} // namespace

void MainQueue::attach()
{
    const std::lock_guard lock(queue().mutex);
    queue().mainThread = std::this_thread::get_id();
    queue().waker = std::make_unique<Waker>();
    queue().wakePosted = false;
    queue().serving = true;
}

void MainQueue::detach()
{
    runWaitingJobs();
    std::unique_ptr<Waker> waker;
    {
        const std::lock_guard lock(queue().mutex);
        queue().serving = false;
        waker = std::move(queue().waker);
    }
    // A job may have arrived between the last look and the end of the service; its owner waits for it.
    runWaitingJobs();
}

bool MainQueue::isMainThread()
{
    const std::lock_guard lock(queue().mutex);
    return queue().mainThread == std::this_thread::get_id();
}

void MainQueue::async(Job job)
{
    static_cast<void>(submit(std::move(job)));
}

void MainQueue::run(Job job)
{
    if (isMainThread()) {
        job();
        return;
    }
    const auto completion = std::make_shared<Completion>();
    const bool taken = submit([completion, &job] {
        std::exception_ptr problem;
        try {
            job();
        } catch (...) {
            problem = std::current_exception();
        }
        const std::lock_guard lock(completion->mutex);
        completion->problem = std::move(problem);
        completion->done = true;
        completion->changed.notify_all();
    });
    if (!taken)
        throw std::runtime_error("the main queue does not serve");
    std::unique_lock lock(completion->mutex);
    completion->changed.wait(lock, [&] { return completion->done; });
    // Taken out, so that the exception ends on this thread and not with what the main thread still holds.
    if (const std::exception_ptr problem = std::move(completion->problem))
        std::rethrow_exception(problem);
}

void MainQueue::drainUntil(const std::function<bool()> &condition)
{
    while (true) {
        // Counted before the look, so that a wake() between the look and the sleep ends the sleep.
        const std::uint64_t seen = wakesSoFar();
        if (condition())
            return;
        if (const Job job = takeJob()) {
            perform(job);
            continue;
        }
        std::unique_lock lock(queue().mutex);
        queue().arrived.wait(lock, [seen] { return !queue().jobs.empty() || queue().wakes != seen; });
    }
}

void MainQueue::wake()
{
    const std::lock_guard lock(queue().mutex);
    ++queue().wakes;
    queue().arrived.notify_all();
}

} // namespace platform

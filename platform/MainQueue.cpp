#include "platform/MainQueue.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <atomic>
#include <condition_variable>
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

/// The next job, or none.
MainQueue::Job takeJob()
{
    const std::lock_guard lock(queue().mutex);
    if (queue().jobs.empty())
        return {};
    MainQueue::Job job = std::move(queue().jobs.front());
    queue().jobs.pop_front();
    return job;
}

void runWaitingJobs()
{
    while (const MainQueue::Job job = takeJob())
        job();
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
    if (!queue().wakePosted) {
        queue().wakePosted = true;
        QCoreApplication::postEvent(queue().waker.get(), new QEvent(Waker::eventType()), Qt::HighEventPriority);
    }
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
        completion->problem = problem;
        completion->done = true;
        completion->changed.notify_all();
    });
    if (!taken)
        throw std::runtime_error("the main queue does not serve");
    std::unique_lock lock(completion->mutex);
    completion->changed.wait(lock, [&] { return completion->done; });
    if (completion->problem)
        std::rethrow_exception(completion->problem);
}

void MainQueue::drainUntil(const std::function<bool()> &condition)
{
    while (!condition()) {
        if (const Job job = takeJob()) {
            job();
            continue;
        }
        std::unique_lock lock(queue().mutex);
        // Whoever makes the condition true takes the lock in wake() afterwards, so nothing slips between the look and
        // the sleep; the short sleep is only there for a condition that was true before the first look.
        if (queue().jobs.empty())
            queue().arrived.wait_for(lock, std::chrono::milliseconds(20));
    }
}

void MainQueue::wake()
{
    const std::lock_guard lock(queue().mutex);
    queue().arrived.notify_all();
}

} // namespace platform

#include "platform/MainQueue.h"

#include "platform/Departures.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
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
    std::uint64_t taken = 0; ///< How many jobs have left the queue so far.
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
    // Ahead of the events that wait: a sequence stands still for as long as its job is not done.
    QCoreApplication::postEvent(queue().waker.get(), new QEvent(Waker::eventType()), Qt::HighEventPriority);
}

constexpr std::uint64_t NoLimit = std::numeric_limits<std::uint64_t>::max();

/// The next job, if it is among the first `limit` that ever were submitted; none otherwise.
MainQueue::Job takeJob(std::uint64_t limit = NoLimit)
{
    const std::lock_guard lock(queue().mutex);
    if (queue().jobs.empty() || queue().taken >= limit)
        return {};
    MainQueue::Job job = std::move(queue().jobs.front());
    queue().jobs.pop_front();
    ++queue().taken;
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

void runWaitingJobs(std::uint64_t limit = NoLimit)
{
    while (const MainQueue::Job job = takeJob(limit))
        perform(job);
}

std::uint64_t wakesSoFar()
{
    const std::lock_guard lock(queue().mutex);
    return queue().wakes;
}

/// Returns when a job is there, when the wakes are not those that were seen, or at the point in time.
void waitForChange(std::uint64_t seen, std::chrono::steady_clock::time_point limit)
{
    std::unique_lock lock(queue().mutex);
    const auto changed = [seen] { return !queue().jobs.empty() || queue().wakes != seen; };
    // Waiting for the end of time overflows in the library's arithmetic.
    if (limit == std::chrono::steady_clock::time_point::max())
        queue().arrived.wait(lock, changed);
    else
        queue().arrived.wait_until(lock, limit, changed);
}

bool Waker::event(QEvent *event)
{
    if (event->type() != eventType())
        return QObject::event(event);
    std::size_t jobs = 0;
    {
        const std::lock_guard lock(queue().mutex);
        queue().wakePosted = false;
        jobs = queue().jobs.size();
    }
    // One round: those that come meanwhile wait until the event loop has served keys, timers, signals and
    // paint; busy sequences would otherwise keep it from them for ever.
    const Departures::Round round(jobs);
    MainQueue::serveSubmitted();
    return true;
}

/// Adds a job and sees to it that the main thread looks; false when the queue does not serve.
bool submit(MainQueue::Job job)
{
    {
        const std::lock_guard lock(queue().mutex);
        if (!queue().serving)
            return false;
        queue().jobs.push_back(std::move(job));
        postWake();
    }
    // Behind the lock, which whoever wakes takes first.
    queue().arrived.notify_all();
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

void MainQueue::serveSubmitted()
{
    std::uint64_t limit = 0;
    {
        const std::lock_guard lock(queue().mutex);
        limit = queue().taken + queue().jobs.size();
    }
    runWaitingJobs(limit);
}

bool MainQueue::isMainThread()
{
    const std::lock_guard lock(queue().mutex);
    return queue().mainThread == std::this_thread::get_id();
}

bool MainQueue::isBusy()
{
    const std::lock_guard lock(queue().mutex);
    return !queue().jobs.empty();
}

void MainQueue::async(Job job)
{
    static_cast<void>(submit(std::move(job)));
}

void MainQueue::run(Job job)
{
    // To wait for oneself would be for ever.
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
        {
            const std::lock_guard lock(completion->mutex);
            completion->problem = std::move(problem);
            completion->done = true;
        }
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
    static_cast<void>(drainUntil(condition, std::chrono::steady_clock::time_point::max()));
}

bool MainQueue::drainUntil(const std::function<bool()> &condition,
                           std::chrono::steady_clock::time_point limit)
{
    while (true) {
        // Counted before the look, so that a wake() between the look and the sleep ends the sleep.
        const std::uint64_t seen = wakesSoFar();
        Departures::finish();
        if (condition())
            return true;
        if (std::chrono::steady_clock::now() >= limit)
            return false;
        if (const Job job = takeJob()) {
            perform(job);
            continue;
        }
        waitForChange(seen, limit);
    }
}

void MainQueue::wake()
{
    const std::lock_guard lock(queue().mutex);
    ++queue().wakes;
    queue().arrived.notify_all();
}

} // namespace platform

#pragma once

#include <chrono>
#include <exception>
#include <functional>
#include <optional>
#include <type_traits>
#include <utility>

namespace platform {

/// The queue of work for the main thread, the one that owns every view. The main thread is the one that runs
/// the QCoreApplication; the queue serves whenever that thread's event loop runs, or inside drainUntil().
///
/// Jobs run in the order in which they were submitted, a round at a time: after those that were there when
/// the round began, the event loop serves its other events. An event loop or a drainUntil() that a job runs
/// serves the jobs behind it. Built on the standard library's primitives, so that a thread checker sees every
/// hand-over.
class MainQueue
{
public:
    using Job = std::function<void()>;

    MainQueue() = delete;

    /// Binds the queue to the calling thread and starts serving. Called once, by the program, after its
    /// QCoreApplication was made. Requires: a QCoreApplication.
    static void attach();
    /// Runs what is left in the queue and stops serving; jobs submitted later are refused (see below).
    /// Requires: the main thread; called before the QCoreApplication goes and before the process ends, since
    /// nobody else ends the wait of a sync().
    static void detach();

    [[nodiscard]] static bool isMainThread();
    /// Whether jobs wait. Thread: any.
    [[nodiscard]] static bool isBusy();

    /// Submits a job and returns at once. Thread: any. A job submitted before attach() or after detach() is
    /// dropped. An exception that leaves the job ends the process.
    static void async(Job job);

    /// Runs a job on the main thread and returns when it is done, with its result; an exception from the job
    /// is thrown here. On the main thread the job runs in place. Thread: any.
    /// Errors: throws std::runtime_error when the queue does not serve (before attach(), after detach()).
    template <class Function>
    static std::invoke_result_t<Function> sync(Function &&function)
    {
        using Result = std::invoke_result_t<Function>;
        if constexpr (std::is_void_v<Result>) {
            run(Job(std::ref(function)));
        } else {
            std::optional<Result> result;
            run([&] { result.emplace(function()); });
            return std::move(*result);
        }
    }

    /// Runs the jobs that wait, and those that arrive, until the condition holds; for a main thread that has
    /// to wait for a worker which itself may be waiting for the main thread. Delivers no other events.
    /// Requires: the main thread; that the condition becomes true by a job of this queue, or that wake() is
    /// called after it became true.
    static void drainUntil(const std::function<bool()> &condition);
    /// Runs the jobs that have been submitted so far, for somebody whom they need and who is about to go.
    /// Requires: the main thread.
    static void serveSubmitted();
    /// The same until a point in time at the latest; says whether the condition holds.
    [[nodiscard]] static bool drainUntil(const std::function<bool()> &condition,
                                         std::chrono::steady_clock::time_point limit);
    /// Makes drainUntil() look at its condition again. Thread: any.
    static void wake();

private:
    static void run(Job job);
};

} // namespace platform

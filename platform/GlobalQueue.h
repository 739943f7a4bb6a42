#pragma once

#include <functional>

namespace platform {

/// The process-wide pool of worker threads of high priority: work that must keep the main thread free because
/// it waits for blocks on it.
///
/// Thread: any. Jobs may run at the same time and in any order. An exception must not leave a job. The
/// threads end with the process's static objects, each after the job that it is running; jobs not begun by
/// then are dropped.
class GlobalQueue
{
public:
    GlobalQueue() = delete;

    static void async(std::function<void()> job);
};

} // namespace platform

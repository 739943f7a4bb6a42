#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "bench/Clock.h"

namespace baseline {

/// Threads that wait for one another by a standard condition variable: the least that it takes to hand over
/// to a thread that sleeps.
///
/// Thread: the one that makes it. Ownership: joins its threads.
class HandOver
{
public:
    explicit HandOver(int threads = 1);
    ~HandOver();
    HandOver(const HandOver &) = delete;
    HandOver &operator=(const HandOver &) = delete;

    /// Waits until all threads sleep.
    void awaitSleep();
    /// Wakes all of them.
    void wake();
    /// Waits until all have woken, and says when the last one did.
    [[nodiscard]] bench::Nanoseconds awaitWoken();

private:
    void work();

    std::mutex m_mutex;
    std::condition_variable m_toThreads;
    std::condition_variable m_fromThreads;
    int m_count;
    int m_round = 0;
    int m_asleep = 0;
    int m_woken = 0;
    bench::Nanoseconds m_lastWoken = 0;
    bool m_ends = false;
    std::vector<std::jthread> m_threads;
};

} // namespace baseline

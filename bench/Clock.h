#pragma once

#include <chrono>
#include <ctime>

namespace bench {

/// Times are in nanoseconds since some moment that is the same for all threads.
using Nanoseconds = std::chrono::nanoseconds::rep;

/// Thread: any.
[[nodiscard]] inline Nanoseconds now()
{
    return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// The processor time that the calling thread has used.
[[nodiscard]] inline Nanoseconds threadTime()
{
    std::timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::nanoseconds(std::chrono::seconds(time.tv_sec)).count() + time.tv_nsec;
}

/// The processor time that all threads of the process have used.
[[nodiscard]] inline Nanoseconds processTime()
{
    std::timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::nanoseconds(std::chrono::seconds(time.tv_sec)).count() + time.tv_nsec;
}

} // namespace bench

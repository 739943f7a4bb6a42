// The wall clock of a program that this library is loaded into before all others: the real one, and so many
// seconds more as the file in SET_CLOCK_FILE says, a 64-bit number that another program changes. The clocks
// that nobody sets stay as they are.
#include "tests/faults/MappedNumber.h"

#include <cstdint>
#include <ctime>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

timespec now(clockid_t clock)
{
    timespec time = {};
    // Not by the function of this name: a sanitizer's own may not be ready yet.
    ::syscall(SYS_clock_gettime, clock, &time);
    return time;
}

timespec wallClock(clockid_t clock)
{
    static const volatile std::int64_t *const seconds = faults::mappedNumber("SET_CLOCK_FILE");
    timespec time = now(clock);
    time.tv_sec += seconds ? *seconds : 0;
    return time;
}

} // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec *time) noexcept
{
    const bool isWall = clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE;
    *time = isWall ? wallClock(clock) : now(clock);
    return 0;
}

int gettimeofday(timeval *time, void *) noexcept
{
    const timespec wall = wallClock(CLOCK_REALTIME);
    *time = {wall.tv_sec, wall.tv_nsec / 1000};
    return 0;
}

time_t time(time_t *result) noexcept
{
    const time_t seconds = wallClock(CLOCK_REALTIME).tv_sec;
    if (result)
        *result = seconds;
    return seconds;
}
}

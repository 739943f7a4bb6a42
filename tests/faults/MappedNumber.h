#pragma once

#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace faults {

/// A 64-bit number that a test changes while the program runs, in a file that the environment names: for a
/// library that is loaded into a program before all others. Null where no file is named.
///
/// By system calls alone: the functions of those names may be the library's own.
inline const volatile std::int64_t *mappedNumber(const char *variable)
{
    const char *path = std::getenv(variable);
    const long file = path ? ::syscall(SYS_openat, AT_FDCWD, path, O_RDONLY | O_CLOEXEC) : -1;
    if (file < 0)
        return nullptr;
    void *memory = ::mmap(nullptr, sizeof(std::int64_t), PROT_READ, MAP_SHARED, static_cast<int>(file), 0);
    ::close(static_cast<int>(file));
    return memory == MAP_FAILED ? nullptr : static_cast<const volatile std::int64_t *>(memory);
}

} // namespace faults

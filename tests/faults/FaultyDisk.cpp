// A disk that fails under a program that this library is loaded into before all others. It is a folder,
// FAULTY_DISK_FOLDER. While the number in FAULTY_DISK_FILE is not 0, nothing can be written there, and errno
// has that number. What of each file is safe from a power failure, its content when it was synchronised last,
// is in FAULTY_DISK_SYNCED under the file's name.
#include "tests/faults/MappedNumber.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace {

/// Of the same name, behind this library: the system's, or a sanitizer's.
template <class Function>
Function *next(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

bool isOnDisk(std::string_view path)
{
    static const char *const folder = std::getenv("FAULTY_DISK_FOLDER");
    return folder && path.starts_with(folder);
}

std::string pathOf(int file)
{
    std::array<char, PATH_MAX> path = {};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
    return {path.data(), length < 0 ? 0 : static_cast<std::size_t>(length)};
}

int fault()
{
    static const volatile std::int64_t *const number = faults::mappedNumber("FAULTY_DISK_FILE");
    return number ? static_cast<int>(*number) : 0;
}

/// Whether a write is refused; errno says why then, and is as it was otherwise.
bool refuses(const std::string &path)
{
    if (fault() == 0 || !isOnDisk(path))
        return false;
    errno = fault();
    return true;
}

bool refuses(int file)
{
    const int before = errno;
    if (fault() != 0 && refuses(pathOf(file)))
        return true;
    errno = before;
    return false;
}

bool writes(int flags)
{
    return (flags & O_ACCMODE) != O_RDONLY || (flags & (O_CREAT | O_TRUNC)) != 0;
}

/// What has been removed from a folder is gone for good when the folder has been synchronised.
void forgetRemoved(const std::string &path, const char *folder)
{
    std::error_code ignored;
    for (const auto &kept : std::filesystem::directory_iterator(folder, ignored)) {
        if (!std::filesystem::exists(std::filesystem::path(path) / kept.path().filename(), ignored))
            std::filesystem::remove(kept.path(), ignored);
    }
}

/// Nobody else writes the file meanwhile: each file of results has one thread.
void keepSynced(int file)
{
    static const char *const folder = std::getenv("FAULTY_DISK_SYNCED");
    const std::string path = pathOf(file);
    struct stat state = {};
    if (!folder || !isOnDisk(path) || ::fstat(file, &state) != 0)
        return;
    if (S_ISDIR(state.st_mode)) {
        forgetRemoved(path, folder);
        return;
    }
    const std::string kept = folder + path.substr(path.rfind('/'));
    const int copy = ::creat((kept + ".new").c_str(), 0600);
    off_t begin = 0;
    while (begin<state.st_size && ::sendfile(copy, file, &begin,
                                             static_cast<std::size_t>(state.st_size - begin))> 0) {
    }
    ::close(copy);
    ::rename((kept + ".new").c_str(), kept.c_str());
}

int synced(int file, const char *function)
{
    if (refuses(file))
        return -1;
    const int result = next<int(int)>(function)(file);
    if (result == 0)
        keepSynced(file);
    return result;
}

int opened(const char *path, int flags, va_list rest, const char *function)
{
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
    if (writes(flags) && refuses(std::string(path)))
        return -1;
    return next<int(const char *, int, ...)>(function)(path, flags, mode);
}

} // namespace

extern "C" {

int open(const char *path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const int file = opened(path, flags, rest, "open");
    va_end(rest);
    return file;
}

int open64(const char *path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const int file = opened(path, flags, rest, "open64");
    va_end(rest);
    return file;
}

ssize_t write(int file, const void *bytes, size_t count)
{
    return refuses(file) ? -1 : next<ssize_t(int, const void *, size_t)>("write")(file, bytes, count);
}

ssize_t pwrite64(int file, const void *bytes, size_t count, off64_t at)
{
    return refuses(file)
               ? -1
               : next<ssize_t(int, const void *, size_t, off64_t)>("pwrite64")(file, bytes, count, at);
}

int ftruncate(int file, off_t size) noexcept
{
    return refuses(file) ? -1 : next<int(int, off_t)>("ftruncate")(file, size);
}

int ftruncate64(int file, off64_t size) noexcept
{
    return refuses(file) ? -1 : next<int(int, off64_t)>("ftruncate64")(file, size);
}

int fsync(int file)
{
    return synced(file, "fsync");
}

int fdatasync(int file)
{
    return synced(file, "fdatasync");
}
}

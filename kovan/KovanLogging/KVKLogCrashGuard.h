#pragma once

/// Sees to it, while it lives, that a crash loses no line: on a signal that ends the program because
/// something in it is wrong (a bad access, abort(), and with it std::terminate() and a failed assertion), the
/// thread that crashes waits until the receivers of KVKLogGetProxy() have had what was logged before, three
/// seconds at most. Then the signal does what it did before: a core dump shows the place of the fault.
///
/// What SIGKILL loses is what was logged in the last few milliseconds; the same is lost when the thread that
/// crashes by itself is the log's own, or holds a lock that a receiver needs. What another program has sent
/// (kill -ABRT) ends the program a moment later, from a thread that holds none. Thread: the main thread.
/// Several do what one does.
class KVKLogCrashGuard
{
public:
    KVKLogCrashGuard();
    ~KVKLogCrashGuard();
    KVKLogCrashGuard(const KVKLogCrashGuard &) = delete;
    KVKLogCrashGuard &operator=(const KVKLogCrashGuard &) = delete;
};

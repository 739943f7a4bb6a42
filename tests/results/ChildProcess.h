#pragma once

#include <QStringList>

#include <sys/types.h>

namespace testsupport {

/// A program that runs beside the test. Started by the C library alone: what Qt does between fork and exec
/// makes a thread checker lose sight of the thread that starts it.
///
/// Thread: one at a time.
class ChildProcess
{
public:
    /// Starts a program with its arguments, found by its name; both its outputs go to a file.
    bool start(const QStringList &words, const QString &output);
    [[nodiscard]] bool isRunning();
    /// Returns when it has ended, with its exit status; -1 for one that a signal has ended.
    int wait();
    void signal(int number) const;
    [[nodiscard]] pid_t id() const { return m_id; }

private:
    pid_t m_id = 0; ///< 0 while none runs.
    int m_status = -1;
};

} // namespace testsupport

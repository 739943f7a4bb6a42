#pragma once

#include <QString>

#include <sys/types.h>

namespace station {

/// A file that one program at a time may have: it is locked against others as long as this lives, also when
/// the program crashes. Pipes and devices are neither locked nor looked after.
///
/// Thread: one at a time.
class LockedFile
{
public:
    /// Opens the file as open(2) does with these flags, and makes it where there is none, with these rights
    /// less the user's mask. Errors: throws StationError with "path: why", when another one has it too.
    LockedFile(const QString &path, int flags, mode_t rights);
    ~LockedFile();
    LockedFile(const LockedFile &) = delete;
    LockedFile &operator=(const LockedFile &) = delete;

    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] int descriptor() const { return m_descriptor; }
    [[nodiscard]] bool isRegular() const { return m_isRegular; }
    /// Why the path does not lead to the open file any more; nothing when it does, or is no regular one.
    [[nodiscard]] QString lossOfPath() const;
    /// Whether no path leads to it any more.
    [[nodiscard]] bool isUnlinked() const;
    /// In bytes; 0 for what has none.
    [[nodiscard]] qint64 size() const;

private:
    void lookAndLock();

    QString m_path;
    int m_descriptor;
    bool m_isRegular = false;
};

} // namespace station

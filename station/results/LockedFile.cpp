#include "station/results/LockedFile.h"

#include "station/base/StationError.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace station {

/// Not kept by the programs that a sequence starts: they would keep the lock as well.
LockedFile::LockedFile(const QString &path, int flags, mode_t rights)
    : m_path(path)
    , m_descriptor(::open(QFile::encodeName(path).constData(), flags | O_CREAT | O_CLOEXEC, rights))
{
    if (m_descriptor < 0)
        throw StationError(QStringLiteral("%1: %2").arg(path, qt_error_string(errno)));
    try {
        lookAndLock();
    } catch (...) {
        ::close(m_descriptor);
        throw;
    }
}

LockedFile::~LockedFile()
{
    ::close(m_descriptor);
}

/// The lock belongs to the open file and goes with it; a lock file would stay.
void LockedFile::lookAndLock()
{
    struct stat open = {};
    m_isRegular = ::fstat(m_descriptor, &open) == 0 && S_ISREG(open.st_mode);
    if (!m_isRegular || ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0)
        return;
    // A file system without locks keeps nobody from writing.
    if (errno == EWOULDBLOCK)
        throw StationError(QStringLiteral("%1: another station writes to it").arg(m_path));
}

bool LockedFile::isUnlinked() const
{
    struct stat open = {};
    return ::fstat(m_descriptor, &open) == 0 && open.st_nlink == 0;
}

qint64 LockedFile::size() const
{
    struct stat open = {};
    return ::fstat(m_descriptor, &open) == 0 ? open.st_size : 0;
}

QString LockedFile::lossOfPath() const
{
    if (!m_isRegular)
        return {};
    struct stat open = {};
    // Writing to a file that was removed or replaced goes on without an error, and nobody would find the
    // lines.
    struct stat named = {};
    if (::fstat(m_descriptor, &open) != 0)
        return qt_error_string(errno);
    if (::stat(QFile::encodeName(m_path).constData(), &named) != 0)
        return errno == ENOENT ? QStringLiteral("the file has been removed") : qt_error_string(errno);
    if (open.st_dev != named.st_dev || open.st_ino != named.st_ino)
        return QStringLiteral("the file has been replaced");
    return {};
}

} // namespace station

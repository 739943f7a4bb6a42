#include "station/results/AppendedFile.h"

#include "station/StationError.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace station {

namespace {

/// What others may not do, the user's own mask takes away.
constexpr mode_t ReadableByAll = 0666;

/// Not kept by the programs that a sequence starts: they would keep the lock as well.
int openForAppending(const QString &path)
{
    return ::open(QFile::encodeName(path).constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC,
                  ReadableByAll);
}

} // namespace

AppendedFile::Descriptor::~Descriptor()
{
    if (m_number >= 0)
        ::close(m_number);
}

AppendedFile::AppendedFile(const QString &path)
    : m_path(path)
    , m_file(openForAppending(path))
{
    if (m_file.number() < 0)
        throw StationError(QStringLiteral("%1: %2").arg(path, qt_error_string(errno)));
    struct stat open = {};
    m_isRegular = ::fstat(m_file.number(), &open) == 0 && S_ISREG(open.st_mode);
    if (!m_isRegular)
        return;
    lock();
    m_withinLine = endsWithinLine();
}

/// The lock belongs to the open file and goes with it, also when the program crashes; a lock file would stay.
void AppendedFile::lock()
{
    if (::flock(m_file.number(), LOCK_EX | LOCK_NB) == 0)
        return;
    // A file system without locks keeps nobody from writing.
    if (errno == EWOULDBLOCK)
        throw StationError(QStringLiteral("%1: another station writes to it").arg(path()));
}

bool AppendedFile::endsWithinLine() const
{
    QFile content(path());
    // What cannot be read cannot be looked at.
    if (!content.open(QIODevice::ReadOnly) || content.size() == 0 || !content.seek(content.size() - 1))
        return false;
    return content.read(1) != "\n";
}

QString AppendedFile::append(const QByteArray &line)
{
    // A write that ended short has left half a line, which must not swallow this one.
    const QByteArray bytes = (m_withinLine ? "\n" + line : line) + '\n';
    const QString why = write(bytes);
    // Looked at afterwards, so that a file that goes in between is noticed as well.
    return why.isEmpty() && m_isRegular ? lossOfPath() : why;
}

/// To the file itself and not through a buffer: what is returned is about this line, and says why a write
/// ended short.
QString AppendedFile::write(const QByteArray &bytes)
{
    qsizetype written = 0;
    while (written < bytes.size()) {
        const auto count = ::write(m_file.number(), bytes.constData() + written,
                                   static_cast<std::size_t>(bytes.size() - written));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0) {
            const QString why = qt_error_string(errno);
            if (written > 0)
                m_withinLine = bytes.at(written - 1) != '\n';
            return why;
        }
        written += count;
    }
    m_withinLine = false;
    return {};
}

QString AppendedFile::lossOfPath() const
{
    struct stat open = {};
    // Writing to a file that was removed or replaced goes on without an error, and nobody would find the
    // lines.
    struct stat named = {};
    if (::fstat(m_file.number(), &open) != 0)
        return qt_error_string(errno);
    if (::stat(QFile::encodeName(path()).constData(), &named) != 0)
        return errno == ENOENT ? QStringLiteral("the file has been removed") : qt_error_string(errno);
    if (open.st_dev != named.st_dev || open.st_ino != named.st_ino)
        return QStringLiteral("the file has been replaced");
    return {};
}

} // namespace station

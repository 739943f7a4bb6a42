#include "station/results/AppendedFile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace station {

namespace {

/// What others may not do, the user's own mask takes away.
constexpr mode_t ReadableByAll = 0666;

} // namespace

AppendedFile::AppendedFile(const QString &path)
    : m_file(path, O_WRONLY | O_APPEND, ReadableByAll)
    , m_withinLine(m_file.isRegular() && endsWithinLine())
{}

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
    return why.isEmpty() ? m_file.lossOfPath() : why;
}

/// To the file itself and not through a buffer: what is returned is about this line, and says why a write
/// ended short.
QString AppendedFile::write(const QByteArray &bytes)
{
    qsizetype written = 0;
    while (written < bytes.size()) {
        const auto count = ::write(m_file.descriptor(), bytes.constData() + written,
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

} // namespace station

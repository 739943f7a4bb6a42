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
    , m_size(m_file.size())
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
    const QString why = add(line);
    // Looked at afterwards, so that a file that goes in between is noticed as well.
    return why.isEmpty() ? m_file.lossOfPath() : why;
}

QString AppendedFile::add(const QByteArray &line)
{
    const qint64 before = m_file.size();
    const QString why = write((m_withinLine ? "\n" + line : line) + '\n');
    if (why.isEmpty())
        m_withinLine = false;
    else
        takeBack(before);
    m_size = m_file.size();
    return why;
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
        if (count <= 0)
            return qt_error_string(errno);
        written += count;
    }
    return {};
}

/// Half a line is of no use to whoever reads the file meanwhile, and would be there twice later on.
void AppendedFile::takeBack(qint64 size)
{
    const bool isWhole = m_file.size() == size;
    if (isWhole || !m_file.isRegular() || ::ftruncate(m_file.descriptor(), size) == 0)
        return;
    m_withinLine = true;
}

bool AppendedFile::wasCut()
{
    const qint64 size = m_file.size();
    const bool isShorter = m_file.isRegular() && size < m_size;
    if (isShorter)
        m_withinLine = endsWithinLine();
    m_size = size;
    return isShorter;
}

/// By the open file: its path may lead nowhere, or elsewhere.
QByteArrayList AppendedFile::lines() const
{
    QFile content(QStringLiteral("/proc/self/fd/%1").arg(m_file.descriptor()));
    QByteArrayList found;
    if (!content.open(QIODevice::ReadOnly))
        return found;
    while (!content.atEnd()) {
        QByteArray line = content.readLine();
        if (!line.endsWith('\n'))
            break;
        line.chop(1);
        found.append(line);
    }
    return found;
}

} // namespace station

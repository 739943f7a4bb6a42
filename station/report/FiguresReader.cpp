#include "station/report/FiguresReader.h"

#include "station/base/StationError.h"
#include "station/report/FiguresQueries.h"
#include "station/results/SqliteFile.h"

#include <QDateTime>
#include <QFileInfo>
#include <QUrl>

namespace station::report {

namespace {

/// A connection that writes nothing.
class ReadConnection : public SqlConnection
{
public:
    /// With others that write; makes the files beside it that SQLite wants for that, where they are not
    /// there.
    enum class Mode { AmongOthers, Alone };

    ReadConnection(const QString &path, Mode mode)
        : SqlConnection(QStringLiteral("QSQLITE"))
    {
        QString address = QStringLiteral("file:") +
                          QString::fromLatin1(QUrl::toPercentEncoding(path, QByteArrayLiteral("/")));
        if (mode == Mode::Alone)
            address += QStringLiteral("?immutable=1");
        database().setDatabaseName(address);
        database().setConnectOptions(
            QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1")
                .arg(UsualPatience.count()));
        open();
    }
};

Figures readBy(ReadConnection::Mode mode, const QString &path, const QString &serial)
{
    ReadConnection connection(path, mode);
    return queryFigures(connection, serial);
}

/// How a file looks from outside.
struct Look
{
    qint64 size;
    QDateTime changed;
    bool isInUse;

    friend bool operator==(const Look &, const Look &) = default;
};

Look lookAt(const QString &path)
{
    const QFileInfo file(path);
    const bool inUse = QFileInfo::exists(path + QStringLiteral("-wal")) ||
                       QFileInfo::exists(path + QStringLiteral("-journal"));
    return {file.size(), file.lastModified(), inUse};
}

/// What is read from a file that nobody has open, by a connection that makes no files beside it: made by
/// another user than the station's, they would keep the station from its own results. Nothing where somebody
/// has it, or has come while it was read.
std::optional<Figures> readAlone(const QString &path, const QString &serial)
{
    const Look before = lookAt(path);
    if (before.isInUse)
        return std::nullopt;
    try {
        Figures figures = readBy(ReadConnection::Mode::Alone, path, serial);
        if (lookAt(path) == before)
            return figures;
    } catch (const SqlError &) {
        if (lookAt(path) == before)
            throw;
    }
    return std::nullopt;
}

Figures read(const QString &path, const QString &serial)
{
    const std::optional<Figures> figures = readAlone(path, serial);
    return figures ? *figures : readBy(ReadConnection::Mode::AmongOthers, path, serial);
}

} // namespace

Figures readFigures(const QString &path, const QString &serial)
{
    const QFileInfo file(path);
    if (!file.exists())
        throw StationError(QStringLiteral("%1: there is no such file").arg(path));
    if (!file.isFile())
        throw StationError(QStringLiteral("%1: is no file").arg(path));
    try {
        // Where the links end, since the files beside it are there.
        Figures figures = read(file.canonicalFilePath(), serial);
        figures.file = path;
        return figures;
    } catch (const SqlError &error) {
        throw StationError(QStringLiteral("%1: %2").arg(path, error.text()));
    }
}

} // namespace station::report

#include "station/instruction/ImageFile.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace station {
namespace {

const QString Outside = QStringLiteral("it lies outside of the sequence's folder and of station.images");

bool isAddress(const QString &written)
{
    static const QRegularExpression address(QStringLiteral("^([A-Za-z][A-Za-z0-9+.-]*://|data:|file:)"));
    return address.match(written).hasMatch();
}

bool isWithin(const QString &path, const QString &folder)
{
    return path.startsWith(folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/'));
}

/// The folders as they are without links, those that are there.
QStringList realFolders(const QStringList &folders)
{
    QStringList real;
    for (const QString &folder : folders) {
        const QString path = folder.isEmpty() ? QString() : QFileInfo(folder).canonicalFilePath();
        if (!path.isEmpty())
            real.append(path);
    }
    return real;
}

bool isWithinOne(const QString &path, const QStringList &folders)
{
    return std::ranges::any_of(folders, [&](const QString &folder) { return isWithin(path, folder); });
}

/// What the path means from a folder. One that is told apart from a path of the program's own resources,
/// which begins with a colon.
QString seenFrom(const QString &folder, const QString &written)
{
    const bool isAbsolute = written.startsWith(QLatin1Char('/'));
    return QDir::cleanPath(isAbsolute ? written : folder + QLatin1Char('/') + written);
}

} // namespace

ImageFile findImage(const QString &written, const QStringList &folders)
{
    if (isAddress(written))
        return {{}, QStringLiteral("it is an address, and only files of this computer are shown")};
    if (written.trimmed().isEmpty() || written.contains(QChar(QChar::Null)))
        return {{}, QStringLiteral("it is no path")};
    const QStringList real = realFolders(folders);
    bool mayLieThere = false;
    bool leadsOutside = false;
    for (const QString &folder : real) {
        const QString path = seenFrom(folder, written);
        const QFileInfo file(path);
        const QString realPath = file.canonicalFilePath();
        if (realPath.isEmpty()) {
            // Whether there is a file outside is nothing that a sequence learns here.
            mayLieThere = mayLieThere || isWithinOne(path, real);
            continue;
        }
        if (!isWithinOne(realPath, real)) {
            leadsOutside = true;
            continue;
        }
        if (!QFileInfo(realPath).isFile())
            return {{}, QStringLiteral("it is no file")};
        return {realPath, {}};
    }
    return {{}, mayLieThere && !leadsOutside ? QStringLiteral("there is no such file") : Outside};
}

} // namespace station

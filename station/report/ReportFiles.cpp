#include "station/report/ReportFiles.h"

#include "station/base/StationError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace station::report {

namespace {

[[noreturn]] void refuse(const QString &path, const QString &why)
{
    throw StationError(QStringLiteral("%1: %2").arg(path, why));
}

void requireOurs(const ReportFile &file)
{
    const QFileInfo info(file.path);
    // A link would be replaced in whatever place it leads to.
    if (info.isSymLink() || (info.exists() && !info.isFile()))
        refuse(file.path, QStringLiteral("is there already, and is no file"));
    if (!info.exists() || info.size() == 0)
        return;
    QFile there(file.path);
    if (!there.open(QIODevice::ReadOnly))
        refuse(file.path, there.errorString());
    if (there.read(file.mark.size()) != file.mark)
        refuse(file.path, QStringLiteral("is there already, and is no report; nothing was written"));
}

void write(const ReportFile &file)
{
    QSaveFile target(file.path);
    if (!target.open(QIODevice::WriteOnly))
        refuse(file.path, target.errorString());
    target.write(file.content);
    // Once more: writing takes time, and others may have come.
    requireOurs(file);
    if (!target.commit())
        refuse(file.path, target.errorString());
}

} // namespace

void writeFiles(const QString &folder, const QList<ReportFile> &files)
{
    for (const ReportFile &file : files)
        requireOurs(file);
    if (QFileInfo(folder).isFile() || !QDir().mkpath(folder))
        refuse(folder, QStringLiteral("the folder cannot be made"));
    for (const ReportFile &file : files)
        write(file);
}

} // namespace station::report

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace station::report {

/// A file that a report makes.
struct ReportFile
{
    QString path;
    QByteArray content;
    /// What the content begins with, as no other file does.
    QByteArray mark;
};

/// Writes the files into a folder, which is made where it is not there. What stands there already is
/// replaced, whole or not at all, if it is an earlier report or empty; anything else stays, and none of the
/// files is written then.
///
/// Errors: throws StationError with "path: why".
void writeFiles(const QString &folder, const QList<ReportFile> &files);

} // namespace station::report

#pragma once

#include <QString>
#include <QStringList>

namespace station {

/// A picture's file, or in words why there is none to be read.
struct ImageFile
{
    QString path;    ///< Absolute, without links; empty when there is a problem.
    QString problem; ///< "there is no such file"; empty otherwise.
};

/// Finds the file that a sequence names. It may be anywhere in the folders and below them, after all links
/// have been followed; a relative path is tried from each folder in turn. Empty folders count for nothing.
/// Thread: any.
[[nodiscard]] ImageFile findImage(const QString &written, const QStringList &folders);

} // namespace station

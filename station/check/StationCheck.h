#pragma once

#include "station/check/Problem.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace station {

/// What is to be looked at.
struct CheckRequest
{
    QStringList files;           ///< Configurations (TOML) and scripts (*.lua).
    QStringList operatorScripts; ///< Scripts that take the operator's place.
    QStringList plugins;         ///< As on the station's command line.
};

/// Looks at configurations, with the sequences that they name, and at scripts, and runs nothing of them. A
/// script of its own is looked at for the station of the only configuration, or for any when there is none or
/// several. Problems are in the order of files and lines.
///
/// Thread: the main thread; there is an application. Errors: throws StationError where plug-ins of the
/// request cannot be loaded.
[[nodiscard]] QList<Problem> checkFiles(const CheckRequest &request);

} // namespace station

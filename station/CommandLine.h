#pragma once

#include "station/look/Theme.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace station {

/// What the station was asked to do.
struct CommandLine
{
    QString config;
    QStringList sequences; ///< Run for each system, instead of the configuration's.
    QString operatorScript;
    QString results;
    QString record; ///< Where what is done at the window is written as an operator's script.
    QString log;
    QStringList
        plugins; ///< Libraries, loaded instead of the configuration's, or folders to look for them in.
    /// Of the operators; the first one is there at the start. None when none was given.
    QStringList badges;
    std::optional<ThemeChoice> theme;
    bool headless = false;
};

/// Reads the arguments (the program's name first). Prints the help or the version itself, and returns nothing
/// then.
///
/// Errors: throws StationError for a wrong usage.
[[nodiscard]] std::optional<CommandLine> readCommandLine(const QStringList &arguments);

} // namespace station

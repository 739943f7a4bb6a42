#pragma once

#include "kovan/KovanLogging/KVKLogging.h"

#include <QList>
#include <QString>
#include <QTime>

namespace station {

/// One line of the log, as the pane keeps it.
struct LogLine
{
    KVKLogLevel level = KVKLogLevel::Default;
    QTime time;         ///< Invalid for a line that tells how many were left out.
    QString text;       ///< Without line breaks.
    QList<int> systems; ///< Those that it is about, where one of their sequences has logged it.
};

/// Which lines are to be seen: those that pass all three.
struct LogFilter
{
    KVKLogLevel least = KVKLogLevel::Debug; ///< Debug lets all pass, Default all but debug, Error errors.
    int system = AllSystems;
    QString text; ///< Somewhere in the line, whichever case; empty for all.

    static constexpr int AllSystems = -1;

    [[nodiscard]] bool passes(const LogLine &line) const;
    bool operator==(const LogFilter &) const = default;
};

} // namespace station

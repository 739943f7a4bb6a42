#pragma once

#include <QString>

namespace station {

/// One system of the station, as the status table names it.
struct SystemRow
{
    int index = 0;
    QString group;
    QString slotName;
};

/// How far a system's sequence is, or how it ended.
enum class SystemState { Idle, Running, Passed, Failed, Erred, Stopped };

/// The state in a word or two, as the operator reads it.
[[nodiscard]] QString stateText(SystemState state);

} // namespace station

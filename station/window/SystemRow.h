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

/// How far a system's sequences are, or how they ended.
enum class SystemState { Idle, Running, Waiting, Passed, Failed, Erred, Stopped };

/// The state in a word, as the operator reads it.
[[nodiscard]] QString stateText(SystemState state);
/// The state with what it is about, where there is more to say: "Waiting: its turn".
[[nodiscard]] QString stateText(SystemState state, const QString &about);

} // namespace station

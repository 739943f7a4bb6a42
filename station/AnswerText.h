#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"

#include <QString>

namespace station {

/// Whether a call has shown something to the operator: by the names that such functions have.
[[nodiscard]] bool isShown(const KVKLuaCall &call);

/// What such a call was answered, short enough for a cell: "SN260001 · OK". Of a group's answer what a slot
/// has given, where it has an entry of its own; of a call that failed the error's code and message. Thread:
/// any.
[[nodiscard]] QString answerText(const KVKLuaCall &call, const QString &slotName);

} // namespace station

#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaSequence.h"
#include "platform/Value.h"

#include <QString>
#include <QStringList>

namespace station {

/// Who a result belongs to.
///
/// Thread: a plain value.
struct ResultOwner
{
    QString sequence;       ///< The script's file name.
    platform::Value system; ///< The system index; nothing for a group's or the station's sequence.
    platform::Value group;  ///< The group's name; nothing for a system's or the station's sequence.
    int number = 0;         ///< The sequence's number in its run, which no other one has.
    QString groupName = {}; ///< The group that it is for or in; empty for the station's.
    /// The slots that it is for: one for a system's, the group's for a group's, all for the station's.
    QStringList slotNames = {};

    /// For people: "system 3", "group G1" or "station".
    [[nodiscard]] QString name() const;
};

/// The outcome in a word, as results have it.
[[nodiscard]] QString outcomeText(KVKLuaOutcome outcome);

} // namespace station

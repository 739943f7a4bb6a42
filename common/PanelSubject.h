#pragma once

#include "platform/Identifier.h"
#include "platform/Value.h"

#include <QList>

#include "common/StationMap.h"
#include "common/Waits.h"

namespace interactive {

/// Whose panel it is: a group's, or that of one system's slot. A show call finds it out once, and hands it on
/// to whoever draws.
///
/// Thread: any, a plain value.
struct PanelSubject
{
    bool isGroup = false;
    /// The one instance that is used for panels of this key.
    platform::Identifier panelKey;
    /// The group's name, also of a slot's panel; "(null)" for a system beyond the mapping, which has no
    /// group.
    platform::Identifier groupName;
    quint64 groupNumber = 0;
    platform::Value systemIndex; ///< Nothing on a group panel.
    platform::Value slot;        ///< Nothing on a group panel.
    QList<quint64> systems;      ///< Those that the panel is for.

    /// Finds out the subject of a panel from the number that a sequence gives for it, the other one being
    /// nothing. Numbers that the station does not have lead to no error here: see StationIndex. A panel for a
    /// group with a system's number beside it is kept under that.
    [[nodiscard]] static PanelSubject of(const platform::Value &groupNumber,
                                         const platform::Value &systemIndex, const StationMap &station,
                                         Waits &waits);
};

} // namespace interactive

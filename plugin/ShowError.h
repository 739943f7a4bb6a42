#pragma once

#include "platform/Identifier.h"
#include "platform/Value.h"

#include <QList>
#include <QString>

namespace interactive {

struct Rooms;

/// Shows a message in the place of a group's panel and returns when the operator has acknowledged it; false
/// when the host ended the wait. The acknowledgement leaves no record. `systems` are those that the call is
/// about. With a null identifier there is nobody to acknowledge: the message is logged and the call returns.
/// Thread: a sequencer thread. Requires: no call waits on a panel of the group.
[[nodiscard]] bool showError(Rooms &rooms, const QString &message, const platform::Dictionary &config,
                             const platform::Identifier &identifier, const QList<quint64> &systems);

} // namespace interactive

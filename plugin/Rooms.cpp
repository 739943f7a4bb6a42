#include "plugin/Rooms.h"

namespace interactive {

Rooms::Rooms(QObject *controller, platform::CollectionViewDelegate *delegate)
    : errors(station, settings, views, document, focus, confirmation, controller)
    , boxes(station, slotStates, views, colors, switches, entries, confirmation, controller)
    , builder({station, records, slotStates, settings, views, focus, defaults, guidance, controller, delegate,
               [this](const QString &key) {
                   if (waits.endOverdue(key))
                       checks.waitHasEnded(key, false);
               }},
              boxes, document, errors, entries, confirmation)
{
    autoConfirm.setPress([this](platform::View *button) { confirmation.confirmBtnClicked(button); });
    // Confirmations belong to a lower room, which knows nothing of groups' buttons: what they ask of them is
    // handed in.
    confirmation.setGroups({
        [this](const platform::Identifier &key) {
            return groupButtons.getGroupButtonState(key) != platform::Button::Off;
        },
        [this](const platform::Identifier &key) { groupButtons.enableGroupButton(false, key); },
    });
}

} // namespace interactive

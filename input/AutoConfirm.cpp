#include "input/AutoConfirm.h"

#include "input/EntryRules.h"
#include "platform/Button.h"

#include <algorithm>

#include "common/Identifiers.h"

namespace interactive {

using platform::Button;
using platform::Identifier;
using platform::TextField;
using platform::View;

namespace {

/// The button beside the field that takes the entries, as an operator finds it: by its title.
Button *okButton(const TextField &field)
{
    const QList<View *> siblings = field.superview() ? field.superview()->subviews() : QList<View *>();
    const auto found = std::find_if(siblings.cbegin(), siblings.cend(), [](View *view) {
        const auto *button = qobject_cast<Button *>(view);
        return button && button->title() == QLatin1String("OK");
    });
    return found == siblings.cend() ? nullptr : qobject_cast<Button *>(*found);
}

} // namespace

void AutoConfirm::look(const Identifier &key)
{
    if (!m_rules.of(key.text())->autoConfirm || !isComplete(key))
        return;
    Button *button = okButton(*m_views.entryField(key.text()));
    if (button && m_press)
        m_press(button);
}

/// What the record holds counts: a default that nobody has confirmed is not in it, and neither is an entry
/// that was refused. One that waits for its verdict is, and may be taken out again.
bool AutoConfirm::isComplete(const Identifier &key) const
{
    const TextField *field = m_views.entryField(key.text());
    const std::optional<platform::Dictionary> record = m_records.record(key.text());
    if (!field || field->hasBegunEntry() || !record || m_checks.arePending(key.text()))
        return false;
    if (!m_views.isGroupView(key))
        return record->contains(identifiers::slotPart(field->identifier()));
    // With every slot switched off nothing was entered.
    return entries::holdsAnySlot(*record, m_station.systemIndexToSlotMapping()) &&
           !m_focus.nextEnabledSlot(entries::filledSlots(*record), key).isValid();
}

} // namespace interactive

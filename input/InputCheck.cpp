#include "input/EntryRules.h"
#include "input/Identifiers.h"
#include "input/SlotLabels.h"
#include "plugin/InteractiveView.h"
#include "plugin/Log.h"
#include "plugin/Messages.h"
#include "plugin/Selectors.h"
#include "presentation/MouseTrackedTextField.h"

namespace interactive {

/// One entry on its way into a record.
struct InteractiveView::Entry
{
    MouseTrackedTextField *field = nullptr;
    QString text;
    platform::Identifier identifier;
    platform::Identifier panelKey;
    QString ownSlot;
    platform::Value pendingSlot; ///< The slot that the entry goes to; nothing when none waits for input.
    platform::Dictionary record; ///< As it stands before the entry is stored.
    QPointer<platform::TextField> target;
};

bool InteractiveView::checkInput(platform::View *sender)
{
    auto *field = qobject_cast<MouseTrackedTextField *>(sender);
    if (!field) {
        log::error(messages::InvalidSender,
                   {selectors::bracketed(selectors::CheckInput), log::describe(sender)});
        return false;
    }
    Entry entry;
    entry.field = field;
    entry.text = field->stringValue();
    entry.identifier = field->identifier();
    entry.panelKey = identifiers::before(identifiers::Separator, entry.identifier);
    entry.ownSlot = identifiers::slotPart(entry.identifier);
    if (isAnswered(entry.panelKey) || !takesEntry(entry))
        return true;
    if (!isValidEntry(entry)) {
        rejectEntry(entry);
        return false;
    }
    acceptEntry(entry);
    return true;
}

/// Finds where the entry goes and makes room for it; false when there is nothing to do.
bool InteractiveView::takesEntry(Entry &entry)
{
    const QString key = entry.panelKey.text();
    platform::Array filled;
    for (const QString &slot : m_savedData.lock()->value(key).toMap().keys())
        filled.append(slot);
    entry.pendingSlot = nextEnabledSlot(filled, entry.panelKey);
    if (!entry.pendingSlot.isValid() && m_enableStatus.lock()->value(key).toMap().contains(entry.ownSlot)) {
        log::standard(messages::NoSlotPending, {entry.identifier});
        return false;
    }
    {
        // Only the pending slot is taken out, from the record as it stands now: what a confirmation has
        // written meanwhile stays.
        const auto savedData = m_savedData.lock();
        entry.record = savedData->value(key).toMap();
        if (entry.pendingSlot.isValid())
            entry.record.remove(platform::description(entry.pendingSlot));
        savedData->insert(key, entry.record);
    }
    entry.target = entryTarget(entry);
    if (!entry.target || !entry.target->isEnabled()) {
        log::standard(messages::SlotViewNotFound, {entry.pendingSlot});
        return false;
    }
    return true;
}

platform::TextField *InteractiveView::entryTarget(const Entry &entry)
{
    if (!entry.pendingSlot.isValid())
        return entry.field;
    const QString slot = platform::description(entry.pendingSlot);
    for (const QPointer<platform::TextField> &field : responders(entry.panelKey.text())) {
        if (field && identifiers::slotPart(field->identifier()) == slot)
            return field;
    }
    return nullptr;
}

bool InteractiveView::isValidEntry(const Entry &entry)
{
    if (!entries::hasRequiredLength(entry.text, entry.record))
        return false;
    const QString method = selectors::bracketed(selectors::CheckInput);
    log::standard(messages::EntryChecked,
                  {method, entry.panelKey, entry.identifier, entry.ownSlot, entry.text});
    if (checkDuplicatedInput(entry.text, entry.panelKey))
        return true;
    log::error(messages::DuplicatedInput, {method, entry.pendingSlot, entry.text});
    return false;
}

void InteractiveView::acceptEntry(const Entry &entry)
{
    entry.field->setBackgroundColor(platform::Color::white());
    if (entry.pendingSlot.isValid()) {
        entry.field->setStringValue(QString());
        entry.target->setStringValue(entry.text);
        entry.target->setBackgroundColor(
            platform::Color::white().withAlphaComponent(2.0 * backgroundAlpha()));
        storeEntry(entry, platform::description(entry.pendingSlot));
        return;
    }
    if (entry.ownSlot != identifiers::SharedInput && !responders(entry.panelKey.text()).isEmpty())
        storeEntry(entry, entry.ownSlot);
}

void InteractiveView::rejectEntry(const Entry &entry)
{
    log::error(messages::InvalidInput,
               {selectors::bracketed(selectors::CheckInput), entry.identifier, entry.text});
    entry.field->setBackgroundColor(platform::Color::standardRed());
    entry.field->selectText();
}

void InteractiveView::storeEntry(const Entry &entry, const QString &slot)
{
    const auto savedData = m_savedData.lock();
    platform::Dictionary record = savedData->value(entry.panelKey.text()).toMap();
    record.insert(slot, entry.text);
    savedData->insert(entry.panelKey.text(), record);
}

bool InteractiveView::checkDuplicatedInput(const QString &text, const platform::Identifier &key)
{
    if (!isGroupView(key) || text.isEmpty())
        return true;
    const auto savedData = m_savedData.lock();
    log::debug(messages::SavedDataSearched,
               {selectors::bracketed(selectors::CheckDuplicatedInput), platform::Value(*savedData), key});
    return !entries::isDuplicate(text, savedData->value(key.text()).toMap());
}

} // namespace interactive

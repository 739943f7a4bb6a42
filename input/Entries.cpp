#include "input/Entries.h"

#include "input/EntryRules.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/LogFormat.h"
#include "presentation/MouseTrackedTextField.h"
#include "presentation/SlotColors.h"

#include "common/Identifiers.h"
#include "common/Log.h"
#include "common/Messages.h"
#include "common/Selectors.h"

namespace interactive {

using platform::Identifier;
using platform::TextField;

namespace {

QString textOf(platform::View &sender)
{
    const auto *field = qobject_cast<const TextField *>(&sender);
    return field ? field->stringValue() : QString();
}

} // namespace

/// One entry on its way into a record.
struct Entries::Entry
{
    MouseTrackedTextField *field = nullptr;
    QString text;
    Identifier identifier;
    Identifier panelKey;
    QString ownSlot;
    platform::Value pendingSlot; ///< The slot that the entry goes to; nothing when none waits for input.
    platform::Dictionary record; ///< As it stands before the entry is stored.
    QPointer<TextField> target;
};

Entries::Entries(PanelRecords &records, const SlotStates &slotStates, Waits &waits,
                 const PanelSettings &settings, PanelViews &views, Focus &focus)
    : m_records(records)
    , m_slotStates(slotStates)
    , m_waits(waits)
    , m_settings(settings)
    , m_views(views)
    , m_focus(focus)
{}

void Entries::endEntry(platform::View *sender)
{
    const Identifier panelKey =
        sender ? identifiers::before(identifiers::Separator, sender->identifier()) : Identifier();
    // Read before the check, which may empty the field.
    const QString text = sender ? textOf(*sender) : QString();
    // So that an entry which is refused early does not pass for the one before it.
    m_outcome = Outcome::Invalid;
    if (!checkInput(sender))
        return;
    if (m_outcome == Outcome::NoSlotWaits && !text.isEmpty())
        refuse(text, QLatin1String(messages::NoSlotWaits));
    if (m_outcome == Outcome::Stored)
        m_focus.entryAccepted(panelKey);
}

bool Entries::checkInput(platform::View *sender)
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
    // The call has its answer; what comes before its panel goes can belong to no answer any more.
    if (m_waits.isAnswered(entry.panelKey)) {
        refuse(entry.text, QLatin1String(messages::PanelIsAnswered));
        return true;
    }
    if (!takesEntry(entry))
        return true;
    if (!isValidEntry(entry)) {
        rejectEntry(entry);
        forgetOwnEntry(entry.identifier);
        return false;
    }
    acceptEntry(entry);
    return true;
}

/// Finds where the entry goes and makes room for it; false when there is nothing to do.
bool Entries::takesEntry(Entry &entry)
{
    const QString key = entry.panelKey.text();
    const platform::Dictionary record = m_records.record(key).value_or(platform::Dictionary());
    entry.pendingSlot = m_focus.nextEnabledSlot(entries::filledSlots(record), entry.panelKey);
    if (!entry.pendingSlot.isValid() && m_slotStates.of(key).toMap().contains(entry.ownSlot)) {
        log::standard(messages::NoSlotPending, {entry.identifier});
        m_outcome = Outcome::NoSlotWaits;
        return false;
    }
    // Only the pending slot is taken out, from the record as it stands now: what a confirmation has
    // written meanwhile stays.
    entry.record = m_records.makeRoom(key, platform::description(entry.pendingSlot));
    entry.target = entryTarget(entry);
    if (!entry.target || !entry.target->isEnabled()) {
        log::standard(messages::SlotViewNotFound, {entry.pendingSlot});
        m_outcome = Outcome::NoSlotWaits;
        return false;
    }
    return true;
}

TextField *Entries::entryTarget(const Entry &entry)
{
    // A slot's panel has no switch states, so no slot is pending there: the field's own takes the entry.
    if (!entry.pendingSlot.isValid())
        return entry.field;
    const QString slot = platform::description(entry.pendingSlot);
    for (const QPointer<TextField> &field : m_views.responders(entry.panelKey.text())) {
        if (field && identifiers::slotPart(field->identifier()) == slot)
            return field;
    }
    return nullptr;
}

bool Entries::isValidEntry(const Entry &entry) const
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

void Entries::acceptEntry(const Entry &entry)
{
    const QString key = entry.panelKey.text();
    // An entry that was rejected before this one has left the field red.
    entry.field->setBackgroundColor(platform::Color::white());
    m_outcome = Outcome::Stored;
    if (entry.pendingSlot.isValid()) {
        entry.field->setStringValue(QString());
        entry.target->setStringValue(entry.text);
        entry.target->setBackgroundColor(SlotColors::valueColor(m_views.lookOf(key, m_settings.look())));
        // Under the slot that it went to and not under the field's name, which is the shared one.
        m_records.store(key, platform::description(entry.pendingSlot), entry.text);
    } else if (entry.ownSlot != identifiers::SharedInput && !m_views.responders(key).isEmpty()) {
        m_records.store(key, entry.ownSlot, entry.text);
    } else {
        m_outcome = Outcome::NoSlotWaits;
    }
}

void Entries::rejectEntry(const Entry &entry)
{
    log::error(messages::InvalidInput,
               {selectors::bracketed(selectors::CheckInput), entry.identifier, entry.text});
    entry.field->setBackgroundColor(platform::Color::standardRed());
    entry.field->selectText();
}

void Entries::refuse(const QString &text, const QString &why)
{
    const QString line = platform::formatMessage(messages::EntryRefused, {text, why});
    log::error("%@", {line});
    KVKExtensionStatusRelay::sharedStatusRelay()->showMessage(line);
}

void Entries::refuseIn(const TextField *field, const platform::RefusedEntry &refused)
{
    forgetOwnEntry(field->identifier());
    refuse(refused.text, platform::formatMessage(messages::InField, {refused.why, field->identifier()}));
}

/// A slot panel's field shows what was refused, or nothing: what it held before is not to be seen any more.
void Entries::forgetOwnEntry(const Identifier &field)
{
    const Identifier panelKey = identifiers::before(identifiers::Separator, field);
    if (!m_views.isGroupView(panelKey))
        static_cast<void>(m_records.discard(panelKey.text(), identifiers::slotPart(field)));
}

bool Entries::checkDuplicatedInput(const QString &text, const Identifier &key) const
{
    if (!m_views.isGroupView(key) || text.isEmpty())
        return true;
    log::debug(messages::SavedDataSearched, {selectors::bracketed(selectors::CheckDuplicatedInput),
                                             platform::Value(m_records.all()), key});
    return !entries::isDuplicate(text, m_records.record(key.text()).value_or(platform::Dictionary()));
}

} // namespace interactive

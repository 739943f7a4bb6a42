#include "input/Entries.h"

#include "input/EntryRules.h"
#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/LogFormat.h"
#include "presentation/MouseTrackedTextField.h"
#include "presentation/SlotColors.h"

#include "common/Identifiers.h"
#include "common/Log.h"
#include "common/Messages.h"
#include "common/RecordKeys.h"
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

/// Which part of a rule refuses what it refuses: a rule has at most one.
QString kindOf(const EntryRule &rule)
{
    if (rule.number)
        return news::Number;
    return rule.choices.isEmpty() ? news::Pattern : news::Choice;
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
    platform::Value value; ///< What the text stands for, once it was judged.

    /// The label whose value it is.
    [[nodiscard]] QString slot() const
    {
        return pendingSlot.isValid() ? platform::description(pendingSlot) : ownSlot;
    }
};

Entries::Entries(const StationMap &station, PanelRecords &records, const SlotStates &slotStates, Waits &waits,
                 const RulesInForce &rules, const GivenAnswers &answers, Checks &checks,
                 const PanelSettings &settings, PanelViews &views, Focus &focus, Defaults &defaults,
                 AutoConfirm &autoConfirm)
    : m_station(station)
    , m_records(records)
    , m_slotStates(slotStates)
    , m_waits(waits)
    , m_rules(rules)
    , m_answers(answers)
    , m_checks(checks)
    , m_settings(settings)
    , m_views(views)
    , m_focus(focus)
    , m_defaults(defaults)
    , m_autoConfirm(autoConfirm)
{}

void Entries::endEntry(platform::View *sender)
{
    const Identifier panelKey =
        sender ? identifiers::before(identifiers::Separator, sender->identifier()) : Identifier();
    // Read before the check, which may empty the field.
    const QString text = sender ? textOf(*sender) : QString();
    // So that an entry which is refused early does not pass for the one before it.
    m_outcome = Outcome::Invalid;
    m_isEnded = true;
    const bool isValid = checkInput(sender);
    m_isEnded = false;
    if (!isValid)
        return;
    if (m_outcome == Outcome::NoSlotWaits && !text.isEmpty())
        refuse({news::placeOf(m_station, panelKey.text()), text, news::Nowhere,
                QLatin1String(messages::NoSlotWaits)});
    if (m_outcome == Outcome::Stored) {
        m_focus.entryAccepted(panelKey);
        m_autoConfirm.look(panelKey);
    }
}

bool Entries::confirmDefaults(const Identifier &key)
{
    TextField *field = m_views.entryField(key.text());
    if (!field || !m_views.isGroupView(key) || m_rules.of(key.text())->defaults.isEmpty())
        return true;
    // What was typed and not ended is meant in the place of a default, which must not be stored over it.
    const bool isRefused = field->hasBegunEntry() && field->stringValue().isEmpty();
    if (isRefused || (field->hasBegunEntry() && !checkInput(field)))
        return false;
    m_confirmsDefault = true;
    bool isStored = true;
    while (const std::optional<QString> text = m_defaults.next(key)) {
        field->setStringValue(*text);
        isStored = checkInput(field);
        // One that is not stored at once waits still, and would be met again.
        if (!isStored || m_outcome != Outcome::Stored)
            break;
    }
    m_confirmsDefault = false;
    return isStored;
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
    // An own one: its editor writes the next entry into the text in place, when the log may still read it.
    entry.text = platform::ownCopy(field->stringValue()).toString();
    entry.identifier = field->identifier();
    entry.panelKey = identifiers::before(identifiers::Separator, entry.identifier);
    entry.ownSlot = identifiers::slotPart(entry.identifier);
    // The call has its answer; what comes before its panel goes can belong to no answer any more.
    if (m_waits.isAnswered(entry.panelKey)) {
        refuse({news::placeOf(m_station, entry.panelKey.text(), entry.ownSlot), entry.text, news::Late,
                QLatin1String(messages::PanelIsAnswered)});
        return true;
    }
    if (!takesEntry(entry))
        return true;
    if (const Refusal refusal = whyRefused(entry); !refusal.why.isEmpty()) {
        rejectEntry(entry, refusal);
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
    return fieldOf(entry.panelKey, platform::description(entry.pendingSlot));
}

Entries::Refusal Entries::whyRefused(Entry &entry) const
{
    if (!entries::hasRequiredLength(entry.text, entry.record)) {
        const qint64 required = platform::integerValue(entry.record.value(keys::Length));
        return {news::Length,
                platform::formatMessage(messages::HasAnotherLength, {entry.text.size(), required})};
    }
    const QString method = selectors::bracketed(selectors::CheckInput);
    log::standard(messages::EntryChecked,
                  {method, entry.panelKey, entry.identifier, entry.ownSlot, entry.text});
    const std::shared_ptr<const AskRules> rules = m_rules.of(entry.panelKey.text());
    const EntryRule &rule = rules->of(entry.slot());
    const Verdict verdict = entries::judged(entry.text, rule);
    if (!verdict.isAccepted())
        return {kindOf(rule), verdict.why};
    entry.value = verdict.value;
    if (rule.allowsEqualEntries() || !wasGivenBefore(entry, *rules))
        return {};
    log::error(messages::DuplicatedInput, {method, entry.pendingSlot, entry.text});
    return {news::Duplicate, QLatin1String(messages::WasGivenBefore)};
}

bool Entries::wasGivenBefore(const Entry &entry, const AskRules &rules) const
{
    if (!checkDuplicatedInput(entry.text, entry.panelKey))
        return true;
    if (rules.unique == AskRules::Unique::Group)
        return false;
    for (const QString &panel : m_rules.panels()) {
        platform::Dictionary record = m_records.record(panel).value_or(platform::Dictionary());
        // "OK" looks at an entry again that stands there already.
        if (panel == entry.panelKey.text())
            record.remove(entry.slot());
        if (entries::isDuplicate(entry.text, record))
            return true;
    }
    return rules.unique == AskRules::Unique::Run && !entry.text.isEmpty() && m_answers.contains(entry.text);
}

void Entries::acceptEntry(const Entry &entry)
{
    const QString key = entry.panelKey.text();
    // An entry that was rejected before this one has left the field red, and its reason on the panel.
    entry.field->setBackgroundColor(platform::Color::white());
    m_views.tell(key, QString());
    m_outcome = Outcome::Stored;
    // The choice that a beginning stood for is shown whole; a number stays as it was written.
    const bool isText = entry.value.metaType() == QMetaType::fromType<QString>();
    const QString shown = isText ? entry.value.toString() : entry.text;
    if (entry.pendingSlot.isValid()) {
        entry.field->setStringValue(QString());
        entry.target->setStringValue(shown);
        // Under the slot that it went to and not under the field's name, which is the shared one.
        m_records.store(key, entry.slot(), entry.value);
        checkOrTake(entry, *entry.target);
        m_defaults.offer(entry.panelKey);
    } else if (entry.ownSlot != identifiers::SharedInput && !m_views.responders(key).isEmpty()) {
        if (shown != entry.text)
            entry.field->setStringValue(shown);
        m_records.store(key, entry.ownSlot, entry.value);
        checkOrTake(entry, *entry.field);
    } else {
        m_outcome = Outcome::NoSlotWaits;
    }
}

/// An entry that stands in the record waits there for the verdict of its call's own function, if there is
/// one: so the entries behind it go to other slots, and an equal one is a duplicate.
void Entries::checkOrTake(const Entry &entry, TextField &field)
{
    const QString key = entry.panelKey.text();
    if (m_rules.of(key)->validate) {
        if (m_checks.ask(key, entry.slot(), entry.value, entry.text))
            m_waits.ask(key);
        if (m_checks.isPending(key, entry.slot())) {
            field.setBackgroundColor(SlotColors::checkingColor());
            m_views.tell(key, platform::formatMessage(messages::IsBeingChecked, {entry.text}),
                         PanelViews::Tone::Note);
            return;
        }
    }
    becomeValid(entry.panelKey, field);
    // What a button looks at again was told when it was entered.
    if (m_isEnded || entry.record.value(entry.slot()) != entry.value)
        tellAccepted(entry.panelKey, entry.slot(), entry.text);
}

void Entries::tellAccepted(const Identifier &panelKey, const QString &slot, const QString &text) const
{
    KVKExtensionEntryRelay::sharedEntryRelay()->accepted(
        {news::placeOf(m_station, panelKey.text(), slot), text});
}

/// The one place where an entry becomes part of the answer, at once or by a verdict.
void Entries::becomeValid(const Identifier &panelKey, TextField &field) const
{
    const QString key = panelKey.text();
    field.setBackgroundColor(m_views.isGroupView(panelKey)
                                 ? SlotColors::valueColor(m_views.lookOf(key, m_settings.look()))
                                 : platform::Color::white());
}

Entries::Judged Entries::judge(const Identifier &panelKey, const Check &check, bool isGood,
                               const QString &why)
{
    const QString key = panelKey.text();
    const std::optional<platform::Dictionary> record = m_records.record(key);
    const bool stands = record && record->value(check.slot) == check.value;
    TextField *field = fieldOf(panelKey, check.slot);
    // Cleared, replaced or opened again meanwhile; or the call has its answer and takes its panel away.
    if (!m_checks.settle(key, check, isGood) || !stands || !field || m_waits.isAnswered(panelKey)) {
        tellNextCheck(key, check);
        return Judged::Dropped;
    }
    if (!isGood) {
        takeBack(panelKey, check, why);
        return Judged::Refused;
    }
    becomeValid(panelKey, *field);
    tellAccepted(panelKey, check.slot, check.text);
    tellNextCheck(key, check);
    m_autoConfirm.look(panelKey);
    return Judged::Good;
}

/// Nothing is told over the reason why another entry was refused, whose slot still waits.
void Entries::tellNextCheck(const QString &key, const Check &checked) const
{
    if (m_views.told(key) != platform::formatMessage(messages::IsBeingChecked, {checked.text}))
        return;
    const QList<Check> left = m_checks.pending(key);
    m_views.tell(key,
                 left.isEmpty() ? QString()
                                : platform::formatMessage(messages::IsBeingChecked, {left.first().text}),
                 PanelViews::Tone::Note);
}

void Entries::takeBack(const Identifier &panelKey, const Check &check, const QString &why)
{
    TextField *field = fieldOf(panelKey, check.slot);
    log::error(messages::InvalidInput,
               {selectors::bracketed(selectors::CheckInput), field->identifier(), check.text});
    static_cast<void>(m_records.discard(panelKey.text(), check.slot));
    field->setBackgroundColor(platform::Color::standardRed());
    // What the function says about this entry says more than what is said about all.
    if (why.isEmpty())
        m_views.tell(panelKey.text(),
                     refusalText(panelKey.text(), check.text, QLatin1String(messages::IsNotValid)));
    else
        m_views.tell(panelKey.text(), platform::formatMessage(messages::Refused, {check.text, why}));
    KVKExtensionEntryRelay::sharedEntryRelay()->refused(
        {news::placeOf(m_station, panelKey.text(), check.slot), check.text, news::Validate,
         why.isEmpty() ? QString(QLatin1String(messages::IsNotValid)) : why});
    // The verdict comes when it comes, unlike that of Return: whoever is about to scan into another field
    // that waits is not led away from it.
    const TextField *focused = m_views.focusedField();
    const bool isElsewhere = focused && focused != field && !focused->identifier().isNull() &&
                             m_focus.needsEntry(identifiers::panelPart(focused->identifier()));
    if (m_views.isGroupView(panelKey))
        m_defaults.offer(panelKey);
    if (m_focus.begunEntry() || isElsewhere)
        return;
    if (m_views.isGroupView(panelKey))
        m_focus.handOn(panelKey);
    else
        field->selectText();
}

TextField *Entries::fieldOf(const Identifier &panelKey, const QString &slot) const
{
    for (const QPointer<TextField> &field : m_views.responders(panelKey.text())) {
        if (field && identifiers::slotPart(field->identifier()) == slot)
            return field;
    }
    return nullptr;
}

QString Entries::refusalText(const QString &panelKey, const QString &text, const QString &why) const
{
    const QString hint = m_rules.of(panelKey)->hint;
    return hint.isEmpty() ? platform::formatMessage(messages::Refused, {text, why})
                          : platform::formatMessage(messages::RefusedWithHint, {hint, why});
}

void Entries::rejectEntry(const Entry &entry, const Refusal &refusal)
{
    log::error(messages::InvalidInput,
               {selectors::bracketed(selectors::CheckInput), entry.identifier, entry.text});
    entry.field->setBackgroundColor(platform::Color::standardRed());
    entry.field->selectText();
    const QString told = refusalText(entry.panelKey.text(), entry.text, refusal.why);
    m_views.tell(entry.panelKey.text(),
                 m_confirmsDefault ? platform::formatMessage(messages::RefusedFor, {entry.slot(), told})
                                   : told);
    KVKExtensionEntryRelay::sharedEntryRelay()->refused(
        {news::placeOf(m_station, entry.panelKey.text(), entry.slot()), entry.text, refusal.kind,
         refusal.why});
}

void Entries::refuse(const KVKRefusedEntry &refused)
{
    const QString line = platform::formatMessage(messages::EntryRefused, {refused.text, refused.why});
    log::error("%@", {line});
    KVKExtensionStatusRelay::sharedStatusRelay()->showMessage(line);
    KVKExtensionEntryRelay::sharedEntryRelay()->refused(refused);
}

void Entries::refuseIn(const TextField *field, const platform::RefusedEntry &refused)
{
    forgetOwnEntry(field->identifier());
    m_views.tell(identifiers::panelPart(field->identifier()),
                 platform::formatMessage(messages::Refused, {refused.text, refused.why}));
    const KVKEntryPlace place = news::placeOf(m_station, identifiers::panelPart(field->identifier()),
                                              identifiers::slotPart(field->identifier()));
    refuse({place, refused.text, news::Unreadable,
            platform::formatMessage(messages::InField, {refused.why, field->identifier()})});
}

/// A slot panel's field shows what was refused, or nothing: what it held before is not to be seen any more.
void Entries::forgetOwnEntry(const Identifier &field)
{
    const Identifier panelKey = identifiers::before(identifiers::Separator, field);
    if (m_views.isGroupView(panelKey))
        return;
    static_cast<void>(m_records.discard(panelKey.text(), identifiers::slotPart(field)));
    m_checks.drop(panelKey.text(), identifiers::slotPart(field));
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

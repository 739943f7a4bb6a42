#include "input/Defaults.h"

#include "input/EntryRules.h"

#include "common/Identifiers.h"

namespace interactive {

using platform::Identifier;
using platform::TextField;

void Defaults::offer(const Identifier &key)
{
    const std::shared_ptr<const AskRules> rules = m_rules.of(key.text());
    TextField *field = m_views.entryField(key.text());
    if (rules->defaults.isEmpty() || !field || field->hasBegunEntry())
        return;
    const std::optional<QString> label = waitingLabel(key, *field);
    // A slot's panel has its answer in the field.
    if (!label && !m_views.isGroupView(key))
        return;
    field->setStringValue(label ? rules->defaults.value(*label) : QString());
    field->setBackgroundColor(platform::Color::white());
    if (field->isFirstResponder())
        field->selectText();
}

std::optional<QString> Defaults::next(const Identifier &key)
{
    const std::shared_ptr<const AskRules> rules = m_rules.of(key.text());
    const TextField *field = m_views.entryField(key.text());
    const std::optional<QString> label = field ? waitingLabel(key, *field) : std::nullopt;
    if (!label || !rules->defaults.contains(*label))
        return std::nullopt;
    return rules->defaults.value(*label);
}

std::optional<QString> Defaults::waitingLabel(const Identifier &key, const TextField &field) const
{
    const platform::Dictionary record = m_records.record(key.text()).value_or(platform::Dictionary());
    if (m_views.isGroupView(key)) {
        const platform::Value slot = m_focus.nextEnabledSlot(entries::filledSlots(record), key);
        return slot.isValid() ? std::optional(platform::description(slot)) : std::nullopt;
    }
    const QString own = identifiers::slotPart(field.identifier());
    return record.contains(own) ? std::nullopt : std::optional(own);
}

} // namespace interactive

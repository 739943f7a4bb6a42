#include "input/EntryRules.h"

#include <algorithm>

#include "common/RecordKeys.h"

namespace interactive::entries {

bool hasRequiredLength(const QString &text, const platform::Dictionary &record)
{
    const qint64 required = platform::integerValue(record.value(keys::Length));
    return required <= 0 || text.size() == required;
}

bool isDuplicate(const QString &text, const platform::Dictionary &record)
{
    if (text.isEmpty())
        return false;
    for (auto entry = record.cbegin(); entry != record.cend(); ++entry) {
        // The required length stands in the record, too, and a unit's number may well read like it.
        if (entry.key() != keys::Length && platform::description(entry.value()) == text)
            return true;
    }
    return false;
}

platform::Array filledSlots(const platform::Dictionary &record)
{
    const QStringList slotNames = record.keys();
    return {slotNames.cbegin(), slotNames.cend()};
}

bool holdsAnySlot(const platform::Dictionary &record, const platform::Array &slotMapping)
{
    return std::any_of(slotMapping.cbegin(), slotMapping.cend(), [&](const platform::Value &slot) {
        return record.contains(platform::description(slot));
    });
}

} // namespace interactive::entries

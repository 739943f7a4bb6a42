#pragma once

#include "platform/Value.h"

#include <QString>

/// Rules about what an operator enters: plain values in, a result out. Thread: any.
namespace interactive::entries {

/// Whether a text has the length that the panel's record asks for, in UTF-16 units; a required length of 0, a
/// negative one or none takes any text, the empty one included.
[[nodiscard]] bool hasRequiredLength(const QString &text, const platform::Dictionary &record);

/// Whether a panel's record holds the text already, under any key but "length". The empty text is never a
/// duplicate.
[[nodiscard]] bool isDuplicate(const QString &text, const platform::Dictionary &record);

/// What a panel's record holds an entry for: its keys. The keys that it has for itself name no slot.
[[nodiscard]] platform::Array filledSlots(const platform::Dictionary &record);

/// Whether a record holds a value for any slot of the station.
[[nodiscard]] bool holdsAnySlot(const platform::Dictionary &record, const platform::Array &slotMapping);

} // namespace interactive::entries

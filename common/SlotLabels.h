#pragma once

#include "platform/Value.h"

/// Rules about lists of slot labels: plain lists in, a result out. Thread: any.
namespace interactive::labels {

/// Whether two values are equal as the platform compares objects: the same kind (number, boolean counting as
/// a number; text; list; dictionary) and the same content. The number 1 is not the text "1".
[[nodiscard]] bool isEqual(const platform::Value &a, const platform::Value &b);
[[nodiscard]] bool contains(const platform::Array &list, const platform::Value &value);

/// The elements without later duplicates, in their order.
[[nodiscard]] platform::Array unique(const platform::Array &list);
/// The labels in the order of the first slotCount elements of the mapping; others are dropped.
[[nodiscard]] platform::Array ordered(const platform::Array &list, const platform::Array &slotMapping,
                                      quint64 slotCount);
/// Whether an element occurs more than once.
[[nodiscard]] bool hasDuplication(const platform::Array &list);
/// Whether an element is no slot name of the station.
[[nodiscard]] bool hasInvalidLabel(const platform::Array &list, const platform::Array &slotMapping);

/// The slots that take input: those of a status record whose integer is not negative.
[[nodiscard]] platform::Array enabledSlots(const platform::Dictionary &status);
/// The first of the ordered labels that is not filled; nothing when all are.
[[nodiscard]] platform::Value firstUnfilled(const platform::Array &orderedLabels,
                                            const platform::Array &filled);

} // namespace interactive::labels

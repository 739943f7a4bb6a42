#pragma once

#include "platform/Value.h"

namespace interactive {

/// The element of a station list that a number from Lua names. `method` and `what` ("group number") name the
/// caller and the number in the message. Thread: any. Errors: throws std::out_of_range when there is no such
/// element, std::invalid_argument when the value is no whole number.
[[nodiscard]] platform::Value elementAt(const platform::Array &list, const platform::Value &index,
                                        const char *selector, const char *what);

/// Whether a number names an element of the list. Errors: std::invalid_argument as above.
[[nodiscard]] bool isWithin(const platform::Array &list, const platform::Value &index, const char *selector,
                            const char *what);

} // namespace interactive

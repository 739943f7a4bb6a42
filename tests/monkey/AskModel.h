#pragma once

#include "tests/monkey/Model.h"

#include <optional>

namespace monkey {

/// What the keys of a call say about its entries. A function under "validate" is {function = its name}.

/// Whether one of them has a value that it does not take.
[[nodiscard]] bool areRulesRefused(const Request &request, const Shape &shape);
/// What an entry stands for by itself; nothing when it is refused. Its function has not been asked.
[[nodiscard]] std::optional<platform::Value> taken(const QString &entry, const platform::Dictionary &config);
/// What the functions say that a call may hand over, by name; also the ones that are handed over say it.
[[nodiscard]] bool isGood(const QString &function, const platform::Value &entry);
/// Whether the call's function, if it has one, lets the entry be.
[[nodiscard]] bool passesFunction(const QString &entry, const platform::Dictionary &config);
/// Whether two slots may have the same entry.
[[nodiscard]] bool allowsEqual(const platform::Dictionary &config);
/// The default of a label; empty when it has none.
[[nodiscard]] QString defaultOf(const QString &label, const platform::Dictionary &config);
/// The time that the panel of the call stands at most, in milliseconds; 0 when it has no limit that anybody
/// would live to see.
[[nodiscard]] int limitOf(const platform::Dictionary &config);

} // namespace monkey

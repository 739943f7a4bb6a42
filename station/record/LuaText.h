#pragma once

#include <QString>

namespace station {

/// The text as a Lua string in quotes, on one line: what a person can read stands as it is, everything else
/// as an escape. Half of a character that takes two UTF-16 units becomes U+FFFD, since Lua's texts are UTF-8.
[[nodiscard]] QString luaText(const QString &text);

} // namespace station

#pragma once

#include <QString>

namespace station {

/// What a message of the log or of an error says to whoever works at the window: without the names of
/// methods, the addresses and the classes that it bears for those who look for a fault, and without the calls
/// that led to it. One line. A message that is nothing else stays as it is. Thread: any.
[[nodiscard]] QString operatorText(const QString &message);

} // namespace station

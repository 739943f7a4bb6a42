#pragma once

#include <QString>

namespace platform {
class View;
}

namespace interactive {

/// Orders views by their identifiers, descending, digit runs compared as numbers: -1 when a comes first, 1
/// when b does, 0 when they are equal. The context is not used. Thread: the main thread.
[[nodiscard]] int compareViews(const platform::View *a, const platform::View *b, void *context);

/// Compares texts with runs of digits taken as numbers, ascending: -1, 0 or 1. Thread: any.
[[nodiscard]] int compareNumerically(const QString &a, const QString &b);

} // namespace interactive

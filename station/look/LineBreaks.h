#pragma once

#include <QString>

namespace station {

/// The text with something else in place of each line break, of whichever kind; those at its end are left
/// out. A log's message becomes one entry by this. Thread: any.
[[nodiscard]] QString withoutLineBreaks(QString text, const QString &instead);

} // namespace station

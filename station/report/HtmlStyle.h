#pragma once

#include <QString>

namespace station::report {

/// The style sheet of a report's page: light and dark as the reader's desktop is, for a wide screen, a phone
/// and paper.
[[nodiscard]] QString styleSheet();

} // namespace station::report

#pragma once

namespace station {

/// Sends what Qt itself has to say (a platform without size hints, a missing runtime folder) to the system
/// log, so that the standard error output holds the station's own lines alone. A message that ends the
/// program, such as a display that cannot be reached, becomes one line there and exit status 2.
///
/// Thread: called once on the main thread, before the application is made.
void routeQtMessages();

} // namespace station

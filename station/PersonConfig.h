#pragma once

#include "station/ConfigTable.h"
#include "station/Refusals.h"
#include "station/StationConfig.h"

namespace station {

/// Reads what a configuration says about the person at the station: what is heard, and whether a badge is
/// asked for.
///
/// Errors: throws StationError as ConfigTable does, unless the refusals are collected.
void readPerson(StationConfig &config, const ConfigTable &station, const Refusals &refusals);

/// Reads how the person's scanner types. Errors: as above.
void readScanner(StationConfig &config, const ConfigTable &scanner, const Refusals &refusals);

} // namespace station

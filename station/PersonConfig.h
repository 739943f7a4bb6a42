#pragma once

#include "station/ConfigTable.h"
#include "station/StationConfig.h"

namespace station {

/// Reads what a configuration says about the person at the station: what is heard, how the scanner types, and
/// whether a badge is asked for.
///
/// Errors: throws StationError as ConfigTable does.
void readPerson(StationConfig &config, const ConfigTable &root, const ConfigTable &station);

} // namespace station

#pragma once

#include "station/ConfigTable.h"
#include "station/StationConfig.h"

namespace station {

/// Reads what scripts and files may do on the machine: "[lua]", and "files" of "[station]".
///
/// Thread: any. Errors: throws StationError; of several refusals those that `refusals` takes.
void readMachine(StationConfig &config, const ConfigTable &root, const ConfigTable &station,
                 const Refusals &refusals);

} // namespace station

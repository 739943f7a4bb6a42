#pragma once

#include "kovan/KovanUIExtension/KVKExtensionConfigurationCheck.h"
#include "platform/Value.h"

#include "common/StationMap.h"

namespace interactive {

/// What the functions of the table would say to a call whose arguments are not all known, by the rules that
/// the calls themselves are judged by. See KVKExtensionConfigurationCheck. A station without systems is one
/// that is not known. Thread: any.
[[nodiscard]] KVKCallReport reportOnCall(const QString &function, const platform::Array &arguments,
                                         const StationMap &station);

} // namespace interactive

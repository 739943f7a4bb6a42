#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaLimits.h"
#include "kovan/KovanLuaSequencer/KVKLuaRunner.h"

#include <QString>

struct lua_State;

namespace station {

class OperatorActions;

/// Runs a script in a Lua state of its own, with what its limits leave of the standard libraries, the
/// functions of OperatorFunctions.h, and modules found beside the script. Returns when it has ended.
///
/// Thread: the script's. Errors: why it failed, "file:line: text", and the calls that led there.
[[nodiscard]] KVKLuaRunner::End runOperatorScript(const QString &path, const KVKLuaLimits &limits,
                                                  OperatorActions &actions);

/// The actions of the script that runs in the state.
[[nodiscard]] OperatorActions &actionsOf(lua_State *state);

} // namespace station

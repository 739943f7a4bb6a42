#pragma once

#include <QStringList>

#include <cstddef>

/// What a script may use of the machine that it runs on.
///
/// Thread: a plain value.
struct KVKLuaLimits
{
    QStringList allowed = {};                            ///< Some of KVKLuaAllowances().
    std::size_t memory = std::size_t{256} * 1024 * 1024; ///< Of the script's state, in bytes.

    [[nodiscard]] bool allows(const char *name) const { return allowed.contains(QLatin1String(name)); }
};

/// What a script has only when it is allowed: functions of Lua's libraries ("os.execute"), and "debug" for
/// what that library has besides debug.traceback.
[[nodiscard]] QStringList KVKLuaAllowances();

/// What stands behind the refusal of a function that could be allowed; '%s' is the allowance.
inline constexpr char KVKLuaAdvice[] = "; the configuration allows it with lua.allow = [\"%s\"]";

#pragma once

#include "tests/monkey/World.h"

#include <QString>

/// What holds at every moment, looked at whenever things have come to rest.
///
/// Thread: the main thread. Errors: a promise that is not kept is thrown as BrokenPromise.
namespace monkey {

/// Why things have not come to rest: a call that neither has ended nor waits for somebody who can end it.
/// Empty when they have.
[[nodiscard]] QString unrestIn(const World &world);
/// Serves events until things have come to rest and the condition holds, then judges and drops the calls
/// that have ended.
void settle(
    World &world, const QString &otherwise = {},
    const std::function<bool()> &condition = [] { return true; });

/// Judges what a call that has ended gave back.
void judgeEnded(World &world, Call &call);

} // namespace monkey

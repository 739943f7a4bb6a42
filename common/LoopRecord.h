#pragma once

#include "platform/Value.h"

/// Rules about the loop record: how many passes there are to be, and how many each group has reported. Plain
/// values in, a result out; thread: any.
namespace interactive::loop {

/// The key of a group's count: "LoopCount_2".
[[nodiscard]] QString countKey(const platform::Value &groupNumber);

/// Whether a maximum turns loop mode on: 2 passes or more.
[[nodiscard]] bool isLoop(qint64 maximum);

/// The record with a maximum and every group's count at 0.
[[nodiscard]] platform::Dictionary restarted(platform::Dictionary record, qint64 maximum, quint64 groupCount);

/// What one report of a pass leads to.
struct Pass
{
    platform::Dictionary record;
    bool finished = false; ///< The group has run its last pass (or there is no maximum).
    bool counted = false;  ///< The record has changed and is to be stored.
};
[[nodiscard]] Pass reported(platform::Dictionary record, const platform::Value &groupNumber);

} // namespace interactive::loop

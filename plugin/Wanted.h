#pragma once

#include "platform/Value.h"
#include "plugin/AskConfiguration.h"

#include <QString>

namespace interactive {

/// What the configuration of a show call asks for, whatever its values are.
struct Wanted
{
    platform::Value inputs;
    platform::Value switches;
    platform::Value buttons; ///< Nothing where they are no list.
    qsizetype inputCount = 0;
    qsizetype switchCount = 0;
    /// A value of the wrong type, in words; empty when there is none.
    QString wrongType;
    bool buttonsAreNoList = false;

    [[nodiscard]] bool asks() const { return inputCount > 0 || switchCount > 0; }
};

/// Thread: any, as of the others here.
[[nodiscard]] Wanted wantedBy(const platform::Dictionary &config);
/// Whether the panel is a group's message, which nobody answers.
[[nodiscard]] bool isInformative(const platform::Dictionary &config, bool forGroup);
/// What the optional keys are read with. The decimal point is that of the station's locale.
[[nodiscard]] AskContext askContextOf(const platform::Dictionary &config, const Wanted &wanted,
                                      bool forGroup);

} // namespace interactive

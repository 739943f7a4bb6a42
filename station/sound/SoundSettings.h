#pragma once

namespace station {

/// What a station lets its operator hear.
///
/// Thread: a plain value.
struct SoundSettings
{
    bool areOn = false;
    int volume = 50; ///< From 0 to 100, as it is felt.
};

} // namespace station

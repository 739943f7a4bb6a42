#pragma once

#include "station/sound/Sound.h"

#include <QByteArray>

#include <chrono>

namespace station {

/// A sound as the build has made it.
///
/// Thread: any.
struct SoundFile
{
    QByteArray samples; ///< 16 bits each, little-endian, one channel.
    int samplesPerSecond = 0;

    [[nodiscard]] std::chrono::milliseconds length() const;

    /// Reads it from the program's resources.
    [[nodiscard]] static SoundFile of(Sound sound);
};

} // namespace station

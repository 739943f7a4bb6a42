#pragma once

#include "station/sound/Sound.h"

#include <QByteArray>

namespace station {

/// The sound as a WAV file: 44,100 samples a second, one channel, 16 bits.
///
/// The sounds differ in rhythm as well as in pitch, and stay below what is lost first with the years: one
/// short high note for an accepted entry, two low rough ones for a refused one, three that rise for a
/// finished panel, four quick ones of one height for an error. Each is shorter than 400 ms. Thread: any.
[[nodiscard]] QByteArray waveOf(Sound sound);

} // namespace station

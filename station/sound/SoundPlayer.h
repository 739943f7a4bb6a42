#pragma once

#include "station/sound/SoundSink.h"

#include <QThread>
#include <QTimer>

#include <memory>

namespace station {

class SoundDevice;

/// Plays sounds on the machine's loudspeaker, on a thread of its own: neither the search for a device nor a
/// sound server that does not answer holds up the window. Without a device nothing is heard, and nothing else
/// happens.
///
/// Thread: the main thread.
class SoundPlayer : public SoundSink
{
    Q_OBJECT
public:
    /// `volume` from 0 to 100, as it is felt.
    explicit SoundPlayer(int volume);
    ~SoundPlayer() override;

    void play(Sound sound) override;

private:
    std::unique_ptr<QThread> m_thread;
    std::shared_ptr<SoundDevice> m_device;
    QTimer m_length; ///< Runs as long as the latest sound.
};

} // namespace station

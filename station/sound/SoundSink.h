#pragma once

#include "station/sound/Sound.h"

#include <QObject>

namespace station {

/// Where sounds go to be heard.
///
/// Thread: the main thread.
class SoundSink : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Plays the sound in place of one that is still heard. Returns at once.
    virtual void play(Sound sound) = 0;

signals:
    /// The latest sound was heard to its end, or would have been where there is no device. Not sent for one
    /// that another has replaced.
    void ended();
};

} // namespace station

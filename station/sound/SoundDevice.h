#pragma once

#include "station/sound/Sound.h"

#include <QObject>

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>

class QAudioSink;
class QBuffer;

namespace station {

/// The machine's loudspeaker, found when it is first needed.
///
/// Of sounds that are asked for while the device is busy or not found yet, the newest alone is played, and
/// not at all when its moment is over. Thread: play(), prepare() and close() on any; the work is done on the
/// thread that the object was moved to. Requires: nobody calls it any more when it is destroyed.
class SoundDevice : public QObject
{
    Q_OBJECT
public:
    explicit SoundDevice(int volume);
    ~SoundDevice() override;

    /// Finds the device.
    void prepare();
    void play(Sound sound);
    /// Lets the device go, and ends the thread's event loop.
    void close();

protected:
    bool event(QEvent *event) override;

private:
    using Clock = std::chrono::steady_clock;
    struct Wanted
    {
        Sound sound;
        Clock::time_point since;
    };

    /// What was asked for since the thread looked last.
    struct Orders
    {
        bool prepare = false;
        bool close = false;
        std::optional<Wanted> wanted;
    };

    template <class Change>
    void order(Change change);
    void serve();
    void letGo();
    void start(Sound sound);
    [[nodiscard]] std::unique_ptr<QAudioSink> made() const;

    int m_volume;
    std::mutex m_mutex;
    Orders m_orders; ///< Guarded by m_mutex.
    // The device's thread.
    std::unique_ptr<QBuffer> m_samples; ///< Before the sink, which reads them as long as it lives.
    std::unique_ptr<QAudioSink> m_sink;
};

} // namespace station

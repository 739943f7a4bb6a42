#include "station/sound/SoundDevice.h"

#include "station/sound/SoundFile.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QBuffer>
#include <QCoreApplication>
#include <QEvent>
#include <QMediaDevices>
#include <QThread>

#include <utility>

namespace station {

namespace {

/// A sound that comes later than this would be taken for another entry's.
constexpr std::chrono::milliseconds LatestStart{300};

QAudioFormat formatOf(const SoundFile &file)
{
    QAudioFormat format;
    format.setSampleRate(file.samplesPerSecond);
    format.setChannelCount(1);
    format.setSampleFormat(QAudioFormat::Int16);
    return format;
}

QEvent::Type ordersType()
{
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

} // namespace

SoundDevice::SoundDevice(int volume)
    : m_volume(volume)
{}

SoundDevice::~SoundDevice()
{
    // The device's thread, which has ended, held it last: what it has let go is seen to be gone.
    const std::lock_guard lock(m_mutex);
}

void SoundDevice::prepare()
{
    order([](Orders &orders) { orders.prepare = true; });
}

void SoundDevice::play(Sound sound)
{
    order([sound](Orders &orders) { orders.wanted = Wanted{sound, Clock::now()}; });
}

void SoundDevice::close()
{
    order([](Orders &orders) {
        orders.wanted.reset();
        orders.close = true;
    });
}

/// The event says only that there is something: what it is goes from thread to thread under the lock.
template <class Change>
void SoundDevice::order(Change change)
{
    {
        const std::lock_guard lock(m_mutex);
        change(m_orders);
    }
    QCoreApplication::postEvent(this, new QEvent(ordersType()));
}

bool SoundDevice::event(QEvent *event)
{
    if (event->type() != ordersType())
        return QObject::event(event);
    serve();
    return true;
}

/// Each order posts an event; the first of a burst takes all, and leaves nothing for the others.
void SoundDevice::serve()
{
    Orders orders;
    {
        const std::lock_guard lock(m_mutex);
        orders = std::exchange(m_orders, {});
    }
    if (orders.close) {
        letGo();
        QThread::currentThread()->quit();
        return;
    }
    if (orders.prepare)
        static_cast<void>(made());
    if (orders.wanted && Clock::now() - orders.wanted->since <= LatestStart)
        start(orders.wanted->sound);
}

void SoundDevice::letGo()
{
    const std::lock_guard lock(m_mutex);
    m_sink.reset();
    m_samples.reset();
}

/// On the device as it is now: a headset may have been plugged in since the last sound.
std::unique_ptr<QAudioSink> SoundDevice::made() const
{
    const QAudioFormat format = formatOf(SoundFile::of(Sound::Accepted));
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull() || !device.isFormatSupported(format))
        return nullptr;
    auto sink = std::make_unique<QAudioSink>(device, format);
    sink->setVolume(QAudio::convertVolume(static_cast<float>(m_volume) / 100.0F,
                                          QAudio::LogarithmicVolumeScale, QAudio::LinearVolumeScale));
    return sink;
}

void SoundDevice::start(Sound sound)
{
    // A new one for each sound: what is left of the one before goes with it.
    m_sink.reset();
    m_samples.reset();
    if (m_volume == 0)
        return;
    m_sink = made();
    if (!m_sink)
        return;
    m_samples = std::make_unique<QBuffer>();
    m_samples->setData(SoundFile::of(sound).samples);
    m_samples->open(QIODevice::ReadOnly);
    m_sink->start(m_samples.get());
}

} // namespace station

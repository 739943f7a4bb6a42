#include "station/sound/SoundDevice.h"

#include "station/sound/SoundFile.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QBuffer>
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

} // namespace

SoundDevice::SoundDevice(int volume)
    : m_volume(volume)
{}

SoundDevice::~SoundDevice() = default;

void SoundDevice::prepare()
{
    QMetaObject::invokeMethod(
        this, [this] { static_cast<void>(made()); }, Qt::QueuedConnection);
}

void SoundDevice::play(Sound sound)
{
    {
        const std::lock_guard lock(m_mutex);
        m_wanted = Wanted{sound, Clock::now()};
    }
    QMetaObject::invokeMethod(
        this, [this] { playWanted(); }, Qt::QueuedConnection);
}

void SoundDevice::close()
{
    {
        const std::lock_guard lock(m_mutex);
        m_wanted.reset();
    }
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_sink.reset();
            m_samples.reset();
            QThread::currentThread()->quit();
        },
        Qt::QueuedConnection);
}

std::optional<SoundDevice::Wanted> SoundDevice::takeWanted()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_wanted, std::nullopt);
}

void SoundDevice::playWanted()
{
    // Each request posts a job; the first of a burst takes the newest, and leaves nothing for the others.
    const std::optional<Wanted> wanted = takeWanted();
    if (wanted && Clock::now() - wanted->since <= LatestStart)
        start(wanted->sound);
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

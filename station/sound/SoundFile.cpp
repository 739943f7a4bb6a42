#include "station/sound/SoundFile.h"

#include <QDataStream>
#include <QFile>

namespace station {

namespace {

// Where they stand in a file as the build writes it.
constexpr int RateAt = 24;
constexpr int SamplesAt = 44;
constexpr int BytesPerSample = 2;

} // namespace

std::chrono::milliseconds SoundFile::length() const
{
    if (samplesPerSecond == 0)
        return {};
    return std::chrono::milliseconds(1000 * (samples.size() / BytesPerSample) / samplesPerSecond);
}

SoundFile SoundFile::of(Sound sound)
{
    QFile file(QStringLiteral(":/sounds/%1.wav").arg(nameOf(sound)));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray content = file.readAll();
    QDataStream stream(content.mid(RateAt, 4));
    stream.setByteOrder(QDataStream::LittleEndian);
    quint32 rate = 0;
    stream >> rate;
    return {content.mid(SamplesAt), static_cast<int>(rate)};
}

} // namespace station

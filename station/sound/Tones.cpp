#include "station/sound/Tones.h"

#include <QDataStream>
#include <QIODevice>
#include <QList>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace station {

namespace {

constexpr int SamplesPerSecond = 44100;
constexpr quint16 Channels = 1;
constexpr quint16 BytesPerSample = 2;
constexpr double Loudest = 0.6 * 32767.0;
/// A tone that begins or ends at once would click.
constexpr double EdgeMilliseconds = 6.0;

struct Note
{
    double hertz; ///< 0 for a rest.
    double milliseconds;
    bool isRough = false; ///< With overtones, so that a small loudspeaker brings the low notes, too.
};

QList<Note> notesOf(Sound sound)
{
    switch (sound) {
    case Sound::Accepted:
        return {{988.0, 90.0}};
    case Sound::Refused:
        return {{220.0, 130.0, true}, {0.0, 70.0}, {220.0, 150.0, true}};
    case Sound::Finished:
        return {{392.0, 55.0}, {0.0, 25.0}, {494.0, 55.0}, {0.0, 25.0}, {587.0, 190.0}};
    case Sound::Error:
        break;
    }
    return {{330.0, 65.0}, {0.0, 35.0}, {330.0, 65.0}, {0.0, 35.0},
            {330.0, 65.0}, {0.0, 35.0}, {330.0, 65.0}};
}

/// Between -1 and 1, at a time in seconds since the note began.
double levelOf(const Note &note, double seconds)
{
    const double phase = 2.0 * std::numbers::pi * note.hertz * seconds;
    if (!note.isRough)
        return std::sin(phase);
    return 0.6 * std::sin(phase) + 0.25 * std::sin(3.0 * phase) + 0.15 * std::sin(5.0 * phase);
}

void addNote(QList<qint16> &samples, const Note &note)
{
    const int count = static_cast<int>(note.milliseconds * SamplesPerSecond / 1000.0);
    const double edge = EdgeMilliseconds * SamplesPerSecond / 1000.0;
    for (int i = 0; i < count; ++i) {
        const double rise = std::min({1.0, i / edge, (count - 1 - i) / edge});
        const double level = note.hertz > 0.0 ? levelOf(note, double{1.0} * i / SamplesPerSecond) : 0.0;
        samples.append(static_cast<qint16>(std::lround(Loudest * rise * level)));
    }
}

} // namespace

QByteArray waveOf(Sound sound)
{
    constexpr quint32 FormatBytes = 16;
    constexpr quint32 HeaderBytes = 36;
    constexpr quint16 Pcm = 1;
    QList<qint16> samples;
    for (const Note &note : notesOf(sound))
        addNote(samples, note);
    const auto bytes = static_cast<quint32>(samples.size() * BytesPerSample);
    QByteArray file;
    QDataStream stream(&file, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << HeaderBytes + bytes;
    stream.writeRawData("WAVEfmt ", 8);
    stream << FormatBytes << Pcm << Channels << quint32{SamplesPerSecond}
           << quint32{SamplesPerSecond * Channels * BytesPerSample} << quint16{Channels * BytesPerSample}
           << quint16{8 * BytesPerSample};
    stream.writeRawData("data", 4);
    stream << bytes;
    for (const qint16 sample : samples)
        stream << sample;
    return file;
}

} // namespace station

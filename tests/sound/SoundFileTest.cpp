#include "station/sound/SoundFile.h"

#include <QFile>
#include <QList>
#include <QtEndian>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

using station::Sound;
using station::SoundFile;

namespace {

constexpr int SamplesPerSecond = 44100;
constexpr Sound All[] = {Sound::Accepted, Sound::Refused, Sound::Finished, Sound::Error};

QByteArray fileOf(Sound sound)
{
    QFile file(":/sounds/" + station::nameOf(sound) + ".wav");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    return file.readAll();
}

QList<double> samplesOf(Sound sound)
{
    const QByteArray bytes = SoundFile::of(sound).samples;
    QList<double> samples;
    for (qsizetype i = 0; i + 1 < bytes.size(); i += 2)
        samples.append(qFromLittleEndian<qint16>(bytes.constData() + i));
    return samples;
}

/// One term of a Fourier transform, without a sine for each sample.
double strengthAt(const QList<double> &samples, double hertz)
{
    const double factor = 2.0 * std::cos(2.0 * std::numbers::pi * hertz / SamplesPerSecond);
    double last = 0.0;
    double beforeLast = 0.0;
    for (const double sample : samples) {
        const double next = sample + factor * last - beforeLast;
        beforeLast = last;
        last = next;
    }
    return last * last + beforeLast * beforeLast - factor * last * beforeLast;
}

/// The frequency that is the strongest in the sound, by a Fourier transform in steps of 1 Hz.
double dominantIn(Sound sound)
{
    const QList<double> samples = samplesOf(sound);
    double strongest = 0.0;
    double dominant = 0.0;
    for (double hertz = 60.0; hertz < 3000.0; hertz += 1.0) {
        const double strength = strengthAt(samples, hertz);
        if (strength > strongest) {
            strongest = strength;
            dominant = hertz;
        }
    }
    return dominant;
}

/// How many notes can be told apart: stretches of sound with 10 ms of silence between them.
int notesIn(Sound sound)
{
    int notes = 0;
    int silence = SamplesPerSecond;
    for (const double sample : samplesOf(sound)) {
        const bool isHeard = std::abs(sample) > 300.0;
        if (isHeard && silence > SamplesPerSecond / 100)
            ++notes;
        silence = isHeard ? 0 : silence + 1;
    }
    return notes;
}

TEST(SoundFile, IsAWaveFileThatEveryPlayerKnows)
{
    for (const Sound sound : All) {
        const QByteArray file = fileOf(sound);
        ASSERT_GT(file.size(), 44);
        EXPECT_EQ(file.left(4), "RIFF");
        EXPECT_EQ(qFromLittleEndian<quint32>(file.constData() + 4), quint32(file.size() - 8));
        EXPECT_EQ(file.mid(8, 8), "WAVEfmt ");
        EXPECT_EQ(qFromLittleEndian<quint16>(file.constData() + 20), 1) << "PCM";
        EXPECT_EQ(qFromLittleEndian<quint16>(file.constData() + 22), 1) << "channels";
        EXPECT_EQ(qFromLittleEndian<quint32>(file.constData() + 24), quint32{SamplesPerSecond});
        EXPECT_EQ(qFromLittleEndian<quint32>(file.constData() + 28), quint32{2 * SamplesPerSecond});
        EXPECT_EQ(qFromLittleEndian<quint16>(file.constData() + 34), 16) << "bits";
        EXPECT_EQ(file.mid(36, 4), "data");
        EXPECT_EQ(qFromLittleEndian<quint32>(file.constData() + 40), quint32(file.size() - 44));
    }
}

TEST(SoundFile, IsShortAndNeverDistortedOrClicking)
{
    for (const Sound sound : All) {
        const SoundFile file = SoundFile::of(sound);
        EXPECT_EQ(file.samplesPerSecond, SamplesPerSecond);
        EXPECT_GT(file.length().count(), 50);
        EXPECT_LT(file.length().count(), 400);
        const QList<double> samples = samplesOf(sound);
        const auto [least, most] = std::minmax_element(samples.cbegin(), samples.cend());
        EXPECT_LT(*most, 32767.0);
        EXPECT_GT(*least, -32768.0);
        EXPECT_GT(*most, 8000.0) << "can be heard";
        EXPECT_EQ(samples.first(), 0.0);
        EXPECT_EQ(samples.last(), 0.0);
    }
}

TEST(SoundFile, DiffersFromEachOtherInPitchAndRhythm)
{
    const double expected[] = {988.0, 220.0, 587.0, 330.0};
    const int notes[] = {1, 2, 3, 4};
    double dominants[4];
    for (int i = 0; i < 4; ++i) {
        dominants[i] = dominantIn(All[i]);
        EXPECT_NEAR(dominants[i], expected[i], 3.0) << station::nameOf(All[i]).toStdString();
        EXPECT_EQ(notesIn(All[i]), notes[i]) << station::nameOf(All[i]).toStdString();
    }
    for (const double one : dominants) {
        for (const double other : dominants)
            EXPECT_TRUE(one == other || one / other > 1.4 || other / one > 1.4) << one << " and " << other;
        EXPECT_LT(one, 1500.0) << "what is lost first with the years lies above";
    }
}

} // namespace

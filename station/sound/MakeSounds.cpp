// Writes the station's sounds into a folder; run by the build.
#include "station/sound/Tones.h"

#include <QFile>
#include <QTextStream>

#include <cstdlib>

int main(int argc, char **argv)
{
    QTextStream errors(stderr);
    if (argc != 2) {
        errors << "usage: make_sounds FOLDER" << Qt::endl;
        return EXIT_FAILURE;
    }
    using station::Sound;
    for (const Sound sound : {Sound::Accepted, Sound::Refused, Sound::Finished, Sound::Error}) {
        QFile file(QStringLiteral("%1/%2.wav").arg(QFile::decodeName(argv[1]), station::nameOf(sound)));
        const QByteArray wave = station::waveOf(sound);
        if (!file.open(QIODevice::WriteOnly) || file.write(wave) != wave.size() || !file.flush()) {
            errors << "make_sounds: " << file.fileName() << ": " << file.errorString() << Qt::endl;
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}

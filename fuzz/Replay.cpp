#include <QDir>
#include <QFile>

#include <cstdlib>
#include <iostream>

#include "fuzz/Surroundings.h"
#include "fuzz/Target.h"

// Feeds a target with the files of the folders that it is given, as a test does, without a fuzzer.

namespace {

/// So many files were tried; the name of each stands on the screen when its promise is broken.
int replay(fuzz::Target &target, const QDir &folder)
{
    int tried = 0;
    for (const QFileInfo &entry : folder.entryInfoList(QDir::Files, QDir::Name)) {
        QFile file(entry.filePath());
        if (!file.open(QIODevice::ReadOnly)) {
            std::cerr << entry.filePath().toStdString() << " cannot be read\n";
            std::exit(EXIT_FAILURE);
        }
        std::cout << entry.filePath().toStdString() << std::endl;
        target.feed(fuzz::Input(file.readAll()));
        ++tried;
    }
    return tried;
}

} // namespace

int main(int argc, char **argv)
{
    const fuzz::Surroundings surroundings(argc, argv);
    const std::unique_ptr<fuzz::Target> target = fuzz::makeTarget();
    int tried = 0;
    for (int i = 1; i < argc; ++i)
        tried += replay(*target, QDir(QString::fromLocal8Bit(argv[i])));
    std::cout << tried << " inputs\n";
    return tried > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

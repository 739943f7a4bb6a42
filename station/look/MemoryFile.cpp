#include "station/look/MemoryFile.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

#include <utility>

namespace station {

MemoryFile::MemoryFile(QString file)
    : m_file(std::move(file))
{}

QVariant MemoryFile::value(const QString &key) const
{
    return m_file.isEmpty() ? QVariant() : QSettings(m_file, QSettings::IniFormat).value(key);
}

int MemoryFile::number(const QString &key, int least, int largest, int otherwise) const
{
    bool isNumber = false;
    const int found = value(key).toInt(&isNumber);
    return isNumber && found >= least && found <= largest ? found : otherwise;
}

void MemoryFile::keep(const QString &key, const QVariant &value) const
{
    if (m_file.isEmpty())
        return;
    QSettings settings(m_file, QSettings::IniFormat);
    if (value.isValid())
        settings.setValue(key, value);
    else
        settings.remove(key);
}

QString MemoryFile::usualFile()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return folder.isEmpty() ? QString()
                            : QDir(folder).filePath(QStringLiteral("interactive-station/window.ini"));
}

} // namespace station

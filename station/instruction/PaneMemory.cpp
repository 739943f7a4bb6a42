#include "station/instruction/PaneMemory.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>
#include <QVariant>

namespace station {
namespace {

constexpr char WidthKey[] = "instruction/width";
constexpr char FoldedKey[] = "instruction/folded";
/// No screen is wider; a file may have been written by something else.
constexpr int LargestWidth = 10'000;

} // namespace

PaneMemory::PaneMemory(const QString &file)
    : m_file(file)
{
    if (m_file.isEmpty())
        return;
    const QSettings settings(m_file, QSettings::IniFormat);
    bool isNumber = false;
    const int width = settings.value(QLatin1String(WidthKey)).toInt(&isNumber);
    if (isNumber)
        m_width = qBound(LeastWidth, width, LargestWidth);
    m_folded = settings.value(QLatin1String(FoldedKey)).toBool();
}

void PaneMemory::setWidth(int width)
{
    const int bounded = qBound(LeastWidth, width, LargestWidth);
    if (bounded == m_width)
        return;
    m_width = bounded;
    write(WidthKey, m_width);
}

void PaneMemory::setFolded(bool folded)
{
    if (folded == m_folded)
        return;
    m_folded = folded;
    write(FoldedKey, m_folded);
}

QString PaneMemory::usualFile()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return folder.isEmpty() ? QString()
                            : QDir(folder).filePath(QStringLiteral("interactive-station/window.ini"));
}

void PaneMemory::write(const char *key, const QVariant &value) const
{
    if (!m_file.isEmpty())
        QSettings(m_file, QSettings::IniFormat).setValue(QLatin1String(key), value);
}

} // namespace station

#include "tests/station/StationFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace testsupport {

QString StationFiles::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    EXPECT_TRUE(QDir().mkpath(QFileInfo(file).path()));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << file.errorString().toStdString();
    EXPECT_EQ(file.write(content), content.size());
    return file.fileName();
}

QByteArray StationFiles::read(const QString &name) const
{
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.errorString().toStdString();
    return file.readAll();
}

QStringList StationFiles::lines(const QString &name) const
{
    QStringList found = QString::fromUtf8(read(name)).split(QLatin1Char('\n'));
    found.removeLast();
    return found;
}

} // namespace testsupport

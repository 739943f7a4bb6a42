#pragma once

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace testsupport {

/// A folder with pictures made by the test.
class PictureFiles
{
public:
    [[nodiscard]] QString path(const QString &name = {}) const
    {
        return QDir::cleanPath(QDir(m_folder.path()).canonicalPath() + "/" + name);
    }
    QString write(const QString &name, const QByteArray &content) const
    {
        makeFolderOf(name);
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
        EXPECT_EQ(file.write(content), content.size());
        return path(name);
    }
    /// A picture of one colour, of the kind that the name's ending says.
    QString draw(const QString &name, const QSize &size = {40, 30}, const QColor &color = Qt::red) const
    {
        makeFolderOf(name);
        QImage image(size, QImage::Format_RGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(path(name))) << name.toStdString();
        return path(name);
    }

private:
    void makeFolderOf(const QString &name) const { EXPECT_TRUE(QDir().mkpath(QFileInfo(path(name)).path())); }

    QTemporaryDir m_folder;
};

} // namespace testsupport

#include "station/instruction/Picture.h"

#include "tests/instruction/PictureFiles.h"

#include <QtEndian>

using station::Picture;
using station::readPicture;

namespace {

class PictureTest : public ::testing::Test
{
protected:
    [[nodiscard]] Picture read(const QString &name) const
    {
        const Picture picture = readPicture(name, {files.path()});
        EXPECT_NE(picture.image.isNull(), picture.problem.isEmpty());
        return picture;
    }
    /// What a part of a PNG ends with.
    static quint32 checksum(const QByteArray &bytes)
    {
        quint32 sum = 0xffffffffU;
        for (const char byte : bytes) {
            sum ^= static_cast<quint8>(byte);
            for (int bit = 0; bit < 8; ++bit)
                sum = (sum >> 1) ^ ((sum & 1U) != 0 ? 0xedb88320U : 0U);
        }
        return ~sum;
    }
    /// A file that says how large its picture is, and holds none of it.
    static QByteArray pngOfSize(quint32 width, quint32 height)
    {
        QByteArray header("IHDR");
        const auto number = [](quint32 value) {
            const quint32 big = qToBigEndian(value);
            return QByteArray(reinterpret_cast<const char *>(&big), 4);
        };
        header += number(width) + number(height) + QByteArray("\x08\x02\x00\x00\x00", 5);
        return QByteArray("\x89PNG\r\n\x1a\n") + number(13) + header + number(checksum(header)) + number(0) +
               "IDAT" + number(checksum("IDAT"));
    }

    testsupport::PictureFiles files;
};

TEST_F(PictureTest, ReadsPngAndJpeg)
{
    files.draw("red.png");
    files.draw("blue.jpg", {64, 48}, Qt::blue);
    const QImage red = read("red.png").image;
    EXPECT_EQ(red.size(), QSize(40, 30));
    EXPECT_EQ(red.pixelColor(20, 15), QColor(Qt::red));
    const QImage blue = read("blue.jpg").image;
    EXPECT_EQ(blue.size(), QSize(64, 48));
    EXPECT_GT(blue.pixelColor(20, 15).blue(), 240);
}

TEST_F(PictureTest, ReadsADrawingLargeEnoughToBeLookedAtClosely)
{
    files.write("half.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='100' height='50'>"
                            "<rect width='50' height='50' fill='#00ff00'/></svg>");
    const QImage image = read("half.svg").image;
    EXPECT_EQ(image.size(), QSize(2048, 1024));
    EXPECT_EQ(image.deviceIndependentSize(), QSizeF(100, 50));
    EXPECT_EQ(image.pixelColor(500, 500), QColor(0, 255, 0));
    EXPECT_EQ(image.pixelColor(1500, 500).alpha(), 0);
}

TEST_F(PictureTest, ADrawingOfAnySizeIsBounded)
{
    files.write("large.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='10000000' height='10'/>");
    const QImage image = read("large.svg").image;
    EXPECT_EQ(image.size(), QSize(2048, 1));
}

TEST_F(PictureTest, TheContentCountsAndNotTheName)
{
    files.draw("red.png");
    ASSERT_TRUE(QFile::rename(files.path("red.png"), files.path("red.jpg")));
    EXPECT_EQ(read("red.jpg").image.size(), QSize(40, 30));
}

TEST_F(PictureTest, ALargeOneIsMadeSmallerAsItIsRead)
{
    files.draw("wide.png", {5000, 100});
    files.draw("wide.jpg", {5000, 100});
    EXPECT_EQ(read("wide.png").image.size(), QSize(2048, 40));
    EXPECT_EQ(read("wide.jpg").image.size(), QSize(2048, 40));
}

TEST_F(PictureTest, TooManyPixelsAreRefusedBeforeTheyAreDecoded)
{
    files.write("bomb.png", pngOfSize(100'000, 100'000));
    EXPECT_EQ(read("bomb.png").problem, "it has 100000 x 100000 pixels; 64 million are shown at the most");
    files.write("just.png", pngOfSize(8000, 8001));
    EXPECT_EQ(read("just.png").problem, "it has 8000 x 8001 pixels; 64 million are shown at the most");
}

TEST_F(PictureTest, AFileThatIsTooLargeIsNotDecoded)
{
    QFile file(files.draw("huge.png"));
    ASSERT_TRUE(file.resize(Picture::MostBytes + 1));
    EXPECT_EQ(read("huge.png").problem, "it is larger than 64 MiB");
    ASSERT_TRUE(file.resize(Picture::MostBytes));
    EXPECT_EQ(read("huge.png").image.size(), QSize(40, 30));
}

TEST_F(PictureTest, SaysThatAFileIsEmpty)
{
    files.write("empty.png", "");
    EXPECT_EQ(read("empty.png").problem, "it is empty");
}

TEST_F(PictureTest, SaysThatAFileIsBroken)
{
    QFile file(files.draw("cut.png", {400, 300}));
    ASSERT_TRUE(file.resize(60));
    EXPECT_TRUE(read("cut.png").problem.startsWith("it is broken")) << read("cut.png").problem.toStdString();
    files.write("cut.jpg", QByteArray("\xff\xd8\xff\xe0", 4));
    EXPECT_TRUE(read("cut.jpg").problem.startsWith("it is broken"));
    files.write("cut.svg", "<svg>");
    EXPECT_TRUE(read("cut.svg").problem.startsWith("it is broken"));
}

TEST_F(PictureTest, ReadsNoOtherKinds)
{
    files.draw("red.bmp");
    files.draw("red.ppm");
    files.write("text.png", "hello");
    files.write("packed.svg", QByteArray("\x1f\x8b\x08\x00", 4));
    for (const char *name : {"red.bmp", "red.ppm", "text.png", "packed.svg"})
        EXPECT_EQ(read(name).problem, "it is neither PNG nor JPEG nor SVG") << name;
}

TEST_F(PictureTest, ADrawingDoesNotBringOtherFilesIn)
{
    files.draw("red.png");
    files.write("thief.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'>"
                             "<image width='9' height='9' href='" +
                                 files.path("red.png").toUtf8() + "'/></svg>");
    EXPECT_EQ(read("thief.svg").problem, "it refers to something outside of itself");
}

} // namespace

#include "station/instruction/Picture.h"

#include "station/instruction/ImageFile.h"
#include "station/instruction/SvgCheck.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>

namespace station {
namespace {

/// How large a drawing is made that does not say how large it is.
constexpr QSize UnknownSize{640, 480};

Picture problem(const QString &text)
{
    return {{}, text};
}

QSize bounded(const QSize &size)
{
    const QSize bound(Picture::LongestEdge, Picture::LongestEdge);
    const QSize fits = size.width() > bound.width() || size.height() > bound.height()
                           ? size.scaled(bound, Qt::KeepAspectRatio)
                           : size;
    // A line's other edge would vanish.
    return fits.expandedTo({1, 1});
}

Picture readPixels(QByteArray &content, const QByteArray &format)
{
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setDecideFormatFromContent(false);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isEmpty())
        return problem(QStringLiteral("it is broken (%1)").arg(reader.errorString()));
    if (qint64(size.width()) * size.height() > Picture::MostPixels) {
        return problem(QStringLiteral("it has %1 x %2 pixels; %3 million are shown at the most")
                           .arg(size.width())
                           .arg(size.height())
                           .arg(Picture::MostPixels / 1'000'000));
    }
    if (bounded(size) != size)
        reader.setScaledSize(bounded(size));
    const QImage image = reader.read();
    if (image.isNull())
        return problem(QStringLiteral("it is broken (%1)").arg(reader.errorString()));
    return {image.convertToFormat(QImage::Format_ARGB32_Premultiplied), {}};
}

Picture readDrawing(const QByteArray &content)
{
    const QString why = svgProblem(content);
    if (!why.isEmpty())
        return problem(why);
    QSvgRenderer renderer;
    if (!renderer.load(content))
        return problem(QStringLiteral("it is broken"));
    const QSize own = renderer.defaultSize();
    const QSize size = own.isEmpty() ? UnknownSize : own;
    // As large as may be: it is drawn once, and looked at closely.
    const QSize large = bounded(size.scaled(Picture::LongestEdge, Picture::LongestEdge, Qt::KeepAspectRatio));
    QImage image(large, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    renderer.render(&painter);
    painter.end();
    // What it is shown at where there is room for all of it.
    image.setDevicePixelRatio(double(large.width()) / bounded(size).width());
    return {image, {}};
}

/// By what the file begins with, whatever it is called: no other kind of decoder is ever asked.
Picture decode(QByteArray &content)
{
    if (content.isEmpty())
        return problem(QStringLiteral("it is empty"));
    if (content.startsWith("\x89PNG\r\n\x1a\n"))
        return readPixels(content, QByteArrayLiteral("png"));
    if (content.startsWith("\xff\xd8\xff"))
        return readPixels(content, QByteArrayLiteral("jpeg"));
    const QByteArray begin = content.left(4096).trimmed();
    if (begin.startsWith('<') || begin.startsWith("\xef\xbb\xbf<"))
        return readDrawing(content);
    return problem(QStringLiteral("it is neither PNG nor JPEG nor SVG"));
}

} // namespace

Picture readPicture(const QString &written, const QStringList &folders)
{
    const ImageFile found = findImage(written, folders);
    if (!found.problem.isEmpty())
        return problem(found.problem);
    QFile file(found.path);
    if (!file.open(QIODevice::ReadOnly))
        return problem(file.errorString());
    // One byte more than may be: the file may grow meanwhile.
    QByteArray content = file.read(Picture::MostBytes + 1);
    if (content.size() > Picture::MostBytes)
        return problem(QStringLiteral("it is larger than %1 MiB").arg(Picture::MostBytes / 1024 / 1024));
    return decode(content);
}

} // namespace station

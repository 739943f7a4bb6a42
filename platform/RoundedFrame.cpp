#include "platform/RoundedFrame.h"

#include <QCache>
#include <QImage>
#include <QPainter>

#include <cmath>
#include <utility>

namespace platform {

namespace {

bool isWhole(double number)
{
    return number == std::floor(number);
}

/// Whether a point of the painter is a square of whole pixels, and the area consists of whole points.
bool liesOnPixels(const QPainter &painter, const QRectF &area, double scale)
{
    const QTransform transform = painter.deviceTransform();
    return isWhole(scale) && transform.type() <= QTransform::TxScale && transform.m11() == scale &&
           transform.m22() == scale && isWhole(transform.dx()) && isWhole(transform.dy()) &&
           QRectF(area.toRect()) == area;
}

/// Of a frame without a size, its corners with one point between them; of one with a size, what lies between
/// its middle and its edges.
struct Key
{
    RoundedFrame::Kind kind;
    QSize size;
    double scale = 1.0;

    friend bool operator==(const Key &, const Key &) = default;
};

std::size_t qHash(const Key &key, std::size_t seed)
{
    const RoundedFrame::Kind &kind = key.kind;
    return qHashMulti(seed, kind.name.size(), kind.line, kind.filling, kind.radius, kind.strength,
                      key.size.width(), key.size.height(), key.scale);
}

/// Of a whole frame the upper edge with the lower one below it, and the left one with the right one beside
/// it.
struct Edges
{
    QImage across;
    QImage down;
};

/// Some hundred frames of the size of a slot's box.
constexpr qsizetype MostBytes = 16 * 1024 * 1024;

// Images and not pixmaps, which must not outlive the application.
QCache<Key, Edges> &pictures()
{
    static QCache<Key, Edges> instance(MostBytes);
    return instance;
}

Edges keep(const Key &key, const Edges &made)
{
    pictures().insert(key, new Edges(made), made.across.sizeInBytes() + made.down.sizeInBytes());
    return made;
}

QImage emptyImage(const QSize &size, double scale)
{
    QImage image(size * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    return image;
}

/// The frame of an area with one point between its corners.
QImage pictureOf(const RoundedFrame &frame, double scale)
{
    const Key key{frame.kind, QSize(), scale};
    if (const Edges *known = pictures().object(key))
        return known->across;
    const int extent = 2 * frame.corner + 1;
    QImage picture = emptyImage(QSize(extent, extent), scale);
    QPainter painter(&picture);
    frame.paint(painter, QRectF(0.0, 0.0, extent, extent));
    painter.end();
    return keep(key, {picture, QImage()}).across;
}

/// A piece of an image, all in points of it.
struct Piece
{
    QRectF target;
    QRectF source;
};

void put(QPainter &painter, const QImage &image, const Piece &piece)
{
    const double scale = image.devicePixelRatio();
    painter.drawImage(piece.target, image,
                      QRectF(piece.source.topLeft() * scale, piece.source.size() * scale));
}

/// The edges of a frame of a size, from the kind's picture: to stretch its points takes longer than to put a
/// picture there, and the same frame is painted again and again.
Edges edgesOf(const RoundedFrame &frame, const QSize &size, double scale)
{
    const Key key{frame.kind, size, scale};
    if (const Edges *known = pictures().object(key))
        return *known;
    const QImage picture = pictureOf(frame, scale);
    const double corner = frame.corner;
    const double width = size.width();
    const double height = size.height() - 2.0 * corner;
    const double middle = width - 2.0 * corner;
    Edges edges{emptyImage(QSize(size.width(), 2 * frame.corner), scale),
                emptyImage(QSize(2 * frame.corner, static_cast<int>(height)), scale)};
    QPainter across(&edges.across);
    across.setCompositionMode(QPainter::CompositionMode_Source);
    for (const auto &[to, from] : {std::pair{0.0, 0.0}, std::pair{corner, corner + 1.0}}) {
        put(across, picture, {{0.0, to, corner, corner}, {0.0, from, corner, corner}});
        put(across, picture, {{corner, to, middle, corner}, {corner, from, 1.0, corner}});
        put(across, picture, {{width - corner, to, corner, corner}, {corner + 1.0, from, corner, corner}});
    }
    across.end();
    QPainter down(&edges.down);
    down.setCompositionMode(QPainter::CompositionMode_Source);
    put(down, picture, {{0.0, 0.0, corner, height}, {0.0, corner, corner, 1.0}});
    put(down, picture, {{corner, 0.0, corner, height}, {corner + 1.0, corner, corner, 1.0}});
    down.end();
    return keep(key, edges);
}

} // namespace

void paintFrame(QPainter &painter, const QRectF &area, const RoundedFrame &frame)
{
    const double corner = frame.corner;
    const double scale = painter.device()->devicePixelRatio();
    const double width = area.width();
    const double height = area.height() - 2.0 * corner;
    if (width < 2.0 * corner + 1.0 || height < 1.0 || !liesOnPixels(painter, area, scale)) {
        painter.save();
        frame.paint(painter, area);
        painter.restore();
        return;
    }
    if (corner > 0.0) {
        const Edges edges = edgesOf(frame, area.size().toSize(), scale);
        put(painter, edges.across, {{area.left(), area.top(), width, corner}, {0.0, 0.0, width, corner}});
        put(painter, edges.across,
            {{area.left(), area.bottom() - corner, width, corner}, {0.0, corner, width, corner}});
        put(painter, edges.down,
            {{area.left(), area.top() + corner, corner, height}, {0.0, 0.0, corner, height}});
        put(painter, edges.down,
            {{area.right() - corner, area.top() + corner, corner, height}, {corner, 0.0, corner, height}});
    }
    if (frame.middle.isValid())
        painter.fillRect(area.adjusted(corner, corner, -corner, -corner), frame.middle);
}

} // namespace platform

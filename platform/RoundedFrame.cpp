#include "platform/RoundedFrame.h"

#include <QPainter>
#include <QPixmapCache>

#include <array>
#include <cmath>

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

struct Span
{
    double begin;
    double length;
};
using Thirds = std::array<Span, 3>;

Thirds thirds(double begin, double length, double corner)
{
    return {Span{begin, corner}, Span{begin + corner, length - 2.0 * corner},
            Span{begin + length - corner, corner}};
}

/// The frame of an area with one point between its corners.
QPixmap pictureOf(const RoundedFrame &frame, double scale)
{
    const QString key = QString::asprintf("rounded frame %g ", scale) + frame.kind;
    QPixmap picture;
    if (QPixmapCache::find(key, &picture))
        return picture;
    const int extent = 2 * frame.corner + 1;
    picture = QPixmap(QSize(extent, extent) * scale);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    frame.paint(painter, QRectF(0.0, 0.0, extent, extent));
    painter.end();
    QPixmapCache::insert(key, picture);
    return picture;
}

} // namespace

void paintFrame(QPainter &painter, const QRectF &area, const RoundedFrame &frame)
{
    const double corner = frame.corner;
    const double scale = painter.device()->devicePixelRatio();
    if (area.width() < 2.0 * corner + 1.0 || area.height() < 2.0 * corner + 1.0 ||
        !liesOnPixels(painter, area, scale)) {
        painter.save();
        frame.paint(painter, area);
        painter.restore();
        return;
    }
    const QPixmap picture = pictureOf(frame, scale);
    const Thirds columns = thirds(area.left(), area.width(), corner);
    const Thirds rows = thirds(area.top(), area.height(), corner);
    const Thirds pieces = thirds(0.0, 2.0 * corner + 1.0, corner);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < columns.size(); ++column) {
            const QRectF target(columns[column].begin, rows[row].begin, columns[column].length,
                                rows[row].length);
            const QRectF source(pieces[column].begin * scale, pieces[row].begin * scale,
                                pieces[column].length * scale, pieces[row].length * scale);
            if (row != 1 || column != 1)
                painter.drawPixmap(target, picture, source);
            else if (frame.middle.isValid())
                painter.fillRect(target, frame.middle);
        }
    }
}

} // namespace platform

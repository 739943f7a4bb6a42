#include "station/window/StateSign.h"

#include <QPainterPathStroker>
#include <QPolygonF>

namespace station {
namespace {

// All of them in a square of one by one.

constexpr double Stroke = 0.2;

QPainterPath line(const QPolygonF &points)
{
    QPainterPath path;
    path.addPolygon(points);
    QPainterPathStroker stroker;
    stroker.setWidth(Stroke);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(path).simplified();
}

QPainterPath ring()
{
    QPainterPath path;
    path.addEllipse(QPointF(0.5, 0.5), 0.42, 0.42);
    path.addEllipse(QPointF(0.5, 0.5), 0.26, 0.26);
    return path;
}

QPainterPath triangle()
{
    QPainterPath path;
    path.addPolygon(QPolygonF{{0.14, 0.05}, {0.94, 0.5}, {0.14, 0.95}});
    path.closeSubpath();
    return path;
}

QPainterPath dots()
{
    QPainterPath path;
    for (const double x : {0.12, 0.5, 0.88})
        path.addEllipse(QPointF(x, 0.5), 0.12, 0.12);
    return path;
}

QPainterPath cross()
{
    return line({{0.16, 0.16}, {0.84, 0.84}}).united(line({{0.84, 0.16}, {0.16, 0.84}}));
}

QPainterPath exclamationMark()
{
    QPainterPath path;
    path.addRoundedRect(QRectF(0.39, 0.02, 0.22, 0.62), 0.1, 0.1);
    path.addEllipse(QPointF(0.5, 0.86), 0.13, 0.13);
    return path;
}

QPainterPath square()
{
    QPainterPath path;
    path.addRoundedRect(QRectF(0.1, 0.1, 0.8, 0.8), 0.08, 0.08);
    return path;
}

QPainterPath unitSign(SystemState state)
{
    switch (state) {
    case SystemState::Running:
        return triangle();
    case SystemState::Waiting:
        return dots();
    case SystemState::Passed:
        return line({{0.1, 0.54}, {0.38, 0.84}, {0.9, 0.18}});
    case SystemState::Failed:
        return cross();
    case SystemState::Erred:
        return exclamationMark();
    case SystemState::Stopped:
        return square();
    case SystemState::Idle:
        break;
    }
    return ring();
}

} // namespace

QPainterPath stateSign(SystemState state, const QRectF &square)
{
    QTransform place;
    place.translate(square.x(), square.y());
    place.scale(square.width(), square.height());
    return place.map(unitSign(state));
}

} // namespace station

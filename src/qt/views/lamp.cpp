// How a lamp is drawn.
#include "qt/views/lamp.h"

#include <algorithm>

#include "qt/style/drawing.h"

namespace kestrel::qt {

namespace {

void drawTick(QPainter& painter, const QRectF& place, const QColor& color) {
    const double side = std::min(place.width(), place.height());
    const QPointF centre = place.center();
    const QPointF line[] = {centre + QPointF(-0.22, 0.02) * side, centre + QPointF(-0.06, 0.18) * side,
                            centre + QPointF(0.24, -0.17) * side};
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, std::max(1.5, side * 0.12), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line, 3);
}

QRectF shapeOf(const QRectF& place, bool round) {
    if (!round) return place;
    const double side = std::min(place.width(), place.height());
    QRectF shape(0, 0, side, side);
    shape.moveCenter(place.center());
    return shape;
}

double radiusOf(const QRectF& shape, bool round) {
    return round ? shape.width() / 2 : std::min(3.0, shape.height() / 4);
}

}  // namespace

void drawUnreadLamp(QPainter& painter, const QRectF& place, bool round) {
    const QRectF shape = shapeOf(place, round);
    drawUnread(painter, shape, radiusOf(shape, round));
}

void drawLamp(QPainter& painter, const QRectF& place, bool round, bool lit, bool enabled) {
    const QRectF shape = shapeOf(place, round);
    const double radius = radiusOf(shape, round);
    if (!lit) return drawShape(painter, shape, radius, colors().field, colors().outline, 2);
    const QColor light = enabled ? colors().lit : colors().disabledText;
    drawShape(painter, shape, radius, light, light);
    drawTick(painter, shape, enabled ? colors().onLit : colors().panel);
}

}  // namespace kestrel::qt

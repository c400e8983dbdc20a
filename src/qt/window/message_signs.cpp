// The signs of message boxes.
#include "qt/window/message_signs.h"

#include <QPainter>

#include "qt/style/drawn_icon.h"
#include "qt/style/palette.h"

namespace kestrel::qt {

namespace {

void drawExclamation(QPainter& painter, double middle) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors().field);
    painter.drawRoundedRect(QRectF(-0.05, middle - 0.22, 0.1, 0.27), 0.05, 0.05);
    painter.drawEllipse(QPointF(0, middle + 0.17), 0.06, 0.06);
}

}  // namespace

QIcon warningSign() {
    return drawnIcon([](QPainter& painter) {
        painter.setPen(QPen(colors().waiting, 0.12, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(colors().waiting);
        painter.drawPolygon(QPolygonF({{0, -0.36}, {0.4, 0.34}, {-0.4, 0.34}}));
        drawExclamation(painter, 0.08);
    });
}

QIcon troubleSign() {
    return drawnIcon([](QPainter& painter) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colors().alarm);
        painter.drawEllipse(QPointF(0, 0), 0.46, 0.46);
        drawExclamation(painter, 0.02);
    });
}

}  // namespace kestrel::qt

// The lamp pictures of the status bar.
#include "qt/views/lamp_pictures.h"

#include <QPainter>
#include <QPainterPath>

#include "qt/style/drawn_icon.h"
#include "qt/style/palette.h"

namespace kestrel::qt {

namespace {

constexpr int Lamps = 3;
enum Lamp { Send, Receive, Error };

/// An arrow up for sending, one down for receiving, an exclamation mark for trouble.
QPainterPath markOf(Lamp lamp) {
    QPainterPath mark;
    if (lamp == Error) {
        mark.addRoundedRect(-0.06, -0.27, 0.12, 0.32, 0.06, 0.06);
        mark.addEllipse(QPointF(0, 0.2), 0.075, 0.075);
        return mark;
    }
    const double ahead = lamp == Send ? -1 : 1;
    mark.addPolygon(QPolygonF({{0, ahead * 0.28},
                               {-0.24, 0},
                               {-0.08, 0},
                               {-0.08, ahead * -0.26},
                               {0.08, ahead * -0.26},
                               {0.08, 0},
                               {0.24, 0}}));
    return mark;
}

void drawLampPicture(QPainter& painter, Lamp lamp, bool lit) {
    const QColor light = lamp == Error ? colors().alarm : colors().lit;
    painter.setPen(QPen(lit ? light : colors().outline, 0.09));
    painter.setBrush(lit ? light : QColor(Qt::transparent));
    painter.drawEllipse(QPointF(0, 0), 0.44, 0.44);
    const QColor mark = lamp == Error ? colors().field : colors().onLit;
    painter.fillPath(markOf(lamp), lit ? mark : colors().outline);
}

}  // namespace

QIcon lampPicture(int number) {
    if (number < 1 || number > 2 * Lamps) return {};
    const auto lamp = static_cast<Lamp>((number - 1) % Lamps);
    const bool lit = number > Lamps;
    return drawnIcon([lamp, lit](QPainter& painter) { drawLampPicture(painter, lamp, lit); });
}

}  // namespace kestrel::qt

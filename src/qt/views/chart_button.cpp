// The buttons of a strip chart.
#include "qt/views/chart_button.h"

#include "qt/style/drawing.h"

namespace kestrel::qt {

namespace {

void drawSign(QPainter& painter, ChartButton::Sign sign, const QColor& color) {
    painter.setPen(QPen(color, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    switch (sign) {
        case ChartButton::Sign::Pause:
            painter.drawLine(QPointF(-2.5, -5), QPointF(-2.5, 5));
            painter.drawLine(QPointF(2.5, -5), QPointF(2.5, 5));
            break;
        case ChartButton::Sign::Fit:
            painter.drawLine(QPointF(-6, -5), QPointF(-6, 5));
            painter.drawLine(QPointF(6, -5), QPointF(6, 5));
            painter.drawLine(QPointF(-3, 0), QPointF(3, 0));
            drawArrow(painter, QRectF(-8, -8, 10, 16), Arrow::Left, color);
            drawArrow(painter, QRectF(-2, -8, 10, 16), Arrow::Right, color);
            break;
        case ChartButton::Sign::Follow:
            painter.drawLine(QPointF(6, -5), QPointF(6, 5));
            painter.drawLine(QPointF(-6, 0), QPointF(2, 0));
            drawArrow(painter, QRectF(-5, -8, 12, 16), Arrow::Right, color);
            break;
    }
}

}  // namespace

ChartButton::ChartButton(Sign sign, Word name, QWidget* parent) : QToolButton(parent), sign_(sign), name_(name) {
    renamed();
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
}

void ChartButton::renamed() {
    const QString name = word(name_);
    if (toolTip() == name) return;
    setToolTip(name);
    setAccessibleName(name);
}

QSize ChartButton::sizeHint() const { return {rowHeight(*this), rowHeight(*this)}; }

void ChartButton::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    const QRectF shape = QRectF(rect()).adjusted(3, 3, -3, -3);
    const bool on = isChecked();
    if (on)
        drawShape(brush, shape, CornerRadius, colors().accent, colors().accent);
    else
        drawShape(brush, shape, CornerRadius, isDown() ? colors().line : colors().button,
                  underMouse() ? colors().text : colors().outline);
    if (hasFocus()) drawShape(brush, rect(), CornerRadius + 3, Qt::transparent, colors().accent, 2);
    brush.translate(shape.center());
    drawSign(brush, sign_, on ? colors().onAccent : textColor(*this));
}

}  // namespace kestrel::qt

// How fields that are stepped are laid out and drawn.
#include "qt/style/spin_box_style.h"

#include <QPainter>

#include "qt/style/drawing.h"

namespace kestrel::qt {

namespace {

constexpr int Inset = 3;  ///< from the widget to its shape, room for the focus ring

void drawSign(const QStyleOptionSpinBox& box, QPainter& painter, QStyle::SubControl part, const QWidget* widget) {
    const bool isUp = part == QStyle::SC_SpinBoxUp;
    const bool isLive =
        (box.state & QStyle::State_Enabled) &&
        (box.stepEnabled & (isUp ? QAbstractSpinBox::StepUpEnabled : QAbstractSpinBox::StepDownEnabled));
    const QRectF place = spinBoxPart(box, part, widget);
    const bool isPressed = (box.state & QStyle::State_Sunken) && box.activeSubControls == part;
    if (isPressed && isLive)
        drawShape(painter, place.adjusted(1, 1, -1, -1), CornerRadius, colors().line, colors().line);
    const double edge = isUp ? place.left() : place.right();
    painter.fillRect(QRectF(edge - 0.5, place.top() + 5, 1, place.height() - 10), colors().line);
    painter.setPen(QPen(isLive ? colors().text : colors().line, 1.8, Qt::SolidLine, Qt::RoundCap));
    const QPointF c = place.center();
    constexpr double Reach = 4.5;
    painter.drawLine(c - QPointF(Reach, 0), c + QPointF(Reach, 0));
    if (isUp) painter.drawLine(c - QPointF(0, Reach), c + QPointF(0, Reach));
}

}  // namespace

int spinButtonWidth(const QWidget& widget) { return rowHeight(widget) - Inset; }

QRect spinBoxPart(const QStyleOptionSpinBox& box, QStyle::SubControl part, const QWidget* widget) {
    const QRect shape = box.rect.adjusted(Inset, Inset, -Inset, -Inset);
    const bool hasButtons = box.buttonSymbols != QAbstractSpinBox::NoButtons;
    const int wide = hasButtons && widget ? spinButtonWidth(*widget) : 0;
    switch (part) {
        case QStyle::SC_SpinBoxFrame:
            return box.rect;
        case QStyle::SC_SpinBoxEditField:
            return shape.adjusted(wide + 2, 0, -wide - 2, 0);
        case QStyle::SC_SpinBoxDown:
            return {shape.left(), shape.top(), wide, shape.height()};
        case QStyle::SC_SpinBoxUp:
            return {shape.right() + 1 - wide, shape.top(), wide, shape.height()};
        default:
            return {};
    }
}

void drawSpinBox(const QStyleOptionSpinBox& box, QPainter& painter, const QWidget* widget) {
    const bool enabled = box.state & QStyle::State_Enabled;
    drawShape(painter, QRectF(box.rect).adjusted(Inset, Inset, -Inset, -Inset), CornerRadius,
              enabled ? colors().field : colors().panel, colors().outline);
    if (box.buttonSymbols == QAbstractSpinBox::NoButtons) return;
    drawSign(box, painter, QStyle::SC_SpinBoxDown, widget);
    drawSign(box, painter, QStyle::SC_SpinBoxUp, widget);
}

}  // namespace kestrel::qt

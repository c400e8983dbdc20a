// How fields that are stepped are laid out and drawn: - and + at the two ends of the figure, as large as a finger.
#pragma once

#include <QStyleOptionSpinBox>

class QPainter;

namespace kestrel::qt {

int spinButtonWidth(const QWidget& widget);
QRect spinBoxPart(const QStyleOptionSpinBox& box, QStyle::SubControl part, const QWidget* widget);
void drawSpinBox(const QStyleOptionSpinBox& box, QPainter& painter, const QWidget* widget);

}  // namespace kestrel::qt

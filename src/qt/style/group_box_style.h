// How groups are laid out and drawn: a quiet panel with its title inside.
#pragma once

#include <QStyleOptionGroupBox>

class QPainter;

namespace kestrel::qt {

/// So wide that its title is whole.
int groupBoxWidth(const QFont& font, const QString& title);
QRect groupBoxPart(const QStyleOptionGroupBox& box, QStyle::SubControl part);
void drawGroupBox(const QStyleOptionGroupBox& box, QPainter& painter);

}  // namespace kestrel::qt

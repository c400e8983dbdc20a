// How the title bars of the pages are drawn: flat, the one in front in a colour of its own.
// Where their buttons lie is left to the toolkit.
#pragma once

#include <QStyleOptionTitleBar>

class QPainter;

namespace kestrel::qt {

/// `style` says where the parts lie.
void drawTitleBar(const QStyleOptionTitleBar& bar, QPainter& painter, const QStyle& style, const QWidget* widget);

}  // namespace kestrel::qt

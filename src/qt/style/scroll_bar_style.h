// How the toolkit's scroll bars (of lists and of pages larger than their window) are laid out and drawn.
// A slim handle in a plain groove, without arrows; a bar that sets a value has ends for single steps.
#pragma once

#include <QStyleOptionSlider>

class QPainter;

namespace kestrel::qt {

/// The object name of bars that set a value.
inline constexpr const char* BarWithEnds = "bar";
/// The parts of such a bar.
QRect barPart(const QStyleOptionSlider& bar, QStyle::SubControl part, const QWidget& widget);

/// The handle, or the part of the groove before or after it; nothing for the arrows.
QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part);
void drawScrollBar(const QStyleOptionSlider& bar, QPainter& painter);

}  // namespace kestrel::qt

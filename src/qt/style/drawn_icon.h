// Icons that are drawn when they are shown: sharp at any size, in the colours of the look.
// Used for the lamps of the status bar and the signs of message boxes.
#pragma once

#include <QIcon>
#include <functional>

class QPainter;

namespace kestrel::qt {

/// `draw` draws in a square of side 1 round the point 0.
QIcon drawnIcon(std::function<void(QPainter&)> draw);

}  // namespace kestrel::qt

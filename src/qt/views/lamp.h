// How a lamp is drawn: colour and shape both say whether it is lit.
// Lit is filled and carries a mark; unlit is a hollow grey ring.
#pragma once

#include <QColor>
#include <QPainter>

namespace kestrel::qt {

/// A round lamp is drawn in the largest square in the middle of the place, another one fills the place.
/// A lamp of which is not known yet whether it is lit.
void drawUnreadLamp(QPainter& painter, const QRectF& place, bool round);
void drawLamp(QPainter& painter, const QRectF& place, bool round, bool lit, bool enabled);

}  // namespace kestrel::qt

// Shows a figure that is one of many.
#include "qt/views/tally_view.h"

#include <algorithm>

#include "qt/style/drawing.h"

namespace kestrel::qt {

namespace {

constexpr double Inset = 2;  ///< above and below the bar, so that bars of rows stay apart

}  // namespace

void TallyView::showState() {
    LabelView::showState();
    const double share = std::clamp(static_cast<const Tally&>(model()).Share.get(), 0.0, 1.0);
    if (share == share_) return;
    share_ = share;
    update();
}

void TallyView::paintEvent(QPaintEvent* event) {
    if (share_ > 0 && !unread()) {
        Brush brush(*this);
        const QRectF place = QRectF(rect()).adjusted(0, Inset, 0, -Inset);
        drawShape(brush, QRectF(place.left(), place.top(), std::max(1.0, place.width() * share_), place.height()), 1.5,
                  colors().line, colors().line, 0);
    }
    LabelView::paintEvent(event);
}

}  // namespace kestrel::qt

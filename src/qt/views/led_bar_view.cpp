// Shows a bar of segments.
#include "qt/views/led_bar_view.h"

#include <algorithm>
#include <cmath>

#include "qt/style/drawing.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

constexpr int MostSegments = 20;
constexpr double SegmentGap = 2;

}  // namespace

LedBarView::LedBarView(LedBar& bar) : View(bar) { setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed); }

void LedBarView::showState() {
    if (position_ == model().Position && highest_ == model().PositionMax) return;
    position_ = model().Position;
    highest_ = model().PositionMax;
    valueShown();
}

int LedBarView::segments() const { return std::clamp(highest_, 1, MostSegments); }

QSize LedBarView::sizeHint() const { return {rowHeight(*this) * 4, textHeight(*this)}; }

void LedBarView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    if (unread()) return drawUnread(brush, QRectF(rect()).adjusted(2, 6, -2, -6), 1.5);
    const int count = segments();
    const double part = highest_ > 0 ? std::clamp(static_cast<double>(position_) / highest_, 0.0, 1.0) : 0;
    const auto litCount = static_cast<int>(std::lround(part * count));
    const bool beyond = position_ < 0 || position_ > highest_;
    const QRectF place = QRectF(rect()).adjusted(2, 4, -2, -4);
    const double step = (place.width() + SegmentGap) / count;
    const QColor light = isEnabled() ? colors().lit : colors().disabledText;
    for (int i = 0; i < count; ++i) {
        const QRectF segment(place.left() + i * step, place.top(), step - SegmentGap, place.height());
        const bool last = beyond && i == (position_ < 0 ? 0 : count - 1);
        if (i < litCount || last)
            drawShape(brush, segment, 1.5, last ? colors().alarm : light, light, 0);
        else
            drawShape(brush, segment.adjusted(0, 2, 0, -2), 1.5, colors().field, colors().outline);
    }
}

QString LedBarView::valueInWords() const {
    const bool beyond = position_ < 0 || position_ > highest_;
    return beyond ? qt::outOfRange(QString::number(position_)) : QStringLiteral("%1 / %2").arg(position_).arg(highest_);
}

}  // namespace kestrel::qt

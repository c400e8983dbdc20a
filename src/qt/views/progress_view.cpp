// Shows a progress bar.
#include "qt/views/progress_view.h"

#include <algorithm>
#include <cmath>

#include "qt/style/drawing.h"

namespace kestrel::qt {

ProgressView::ProgressView(ProgressBar& bar) : View(bar) { setPolicy(QSizePolicy::Expanding, QSizePolicy::Fixed); }

void ProgressView::showState() {
    if (value_ == model().Value && highest_ == model().Max) return;
    value_ = model().Value;
    highest_ = model().Max;
    valueShown();
}

double ProgressView::part() const {
    return highest_ > 0 ? std::clamp(static_cast<double>(value_) / highest_, 0.0, 1.0) : 0;
}

QSize ProgressView::sizeHint() const { return {rowHeight(*this) * 5, textHeight(*this)}; }

void ProgressView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    const QRectF track(2, height() / 2.0 - 4, width() - 4.0, 8);
    const QColor strength = isEnabled() ? colors().accent : colors().disabledText;
    drawShape(brush, track, 4, colors().field, colors().outline);
    if (part() <= 0) return;
    const double filled = std::max(track.height(), track.width() * part());
    drawShape(brush, QRectF(track.left(), track.top(), filled, track.height()), 4, strength, strength);
}

QString ProgressView::valueInWords() const { return QStringLiteral("%1 %").arg(std::lround(part() * 100)); }

}  // namespace kestrel::qt

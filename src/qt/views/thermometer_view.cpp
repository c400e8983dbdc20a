// Shows a vertical gauge.
#include "qt/views/thermometer_view.h"

#include <algorithm>
#include <cmath>

#include "platform/numbers.h"
#include "qt/style/drawing.h"
#include "qt/style/scale.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

constexpr double TubeWidth = 12;
constexpr double BulbWidth = 22;

}  // namespace

ThermometerView::ThermometerView(Thermometer& gauge) : View(gauge) {
    setPolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

void ThermometerView::showState() {
    if (value_ == model().Value && lowest_ == model().Min && highest_ == model().Max) return;
    value_ = model().Value;
    lowest_ = model().Min;
    highest_ = model().Max;
    valueShown();
}

QSize ThermometerView::sizeHint() const { return {fontMetrics().height() * 5, fontMetrics().height() * 12}; }

QSize ThermometerView::minimumSizeHint() const { return {fontMetrics().height() * 5, fontMetrics().height() * 8}; }

QRectF ThermometerView::tube() const {
    const double above = fontMetrics().height() + 2.0;  // room for the mark of a value beyond the scale
    return {width() - BulbWidth + (BulbWidth - TubeWidth) / 2 - 1, above, TubeWidth, height() - above - BulbWidth};
}

double ThermometerView::yOf(double value) const {
    const QRectF place = tube();
    const double range = highest_ - lowest_;
    const double part = range > 0 ? std::clamp((value - lowest_) / range, 0.0, 1.0) : 0;
    return place.bottom() - part * place.height();
}

void ThermometerView::paintScale(Brush& brush) const {
    if (!(highest_ > lowest_)) return;
    const int most = std::max(1, static_cast<int>(tube().height() / (fontMetrics().height() * 1.8)));
    const double step = roundStep(highest_ - lowest_, most);
    const double right = tube().left() - 5;
    const double line = fontMetrics().height();
    const auto first = static_cast<int>(std::ceil(lowest_ / step));
    const auto last = static_cast<int>(std::floor(highest_ / step));
    for (int i = first; i <= last; ++i) {
        const double y = yOf(i * step);
        brush.fillRect(QRectF(right - 5, std::round(y), 5, 1), colors().outline);
        brush.setPen(isEnabled() ? colors().quietText : colors().disabledText);
        drawFigures(brush, QRectF(0, y - line / 2, right - 9, line), toQt(formatShort(i * step)));
    }
}

void ThermometerView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    paintScale(brush);
    const QRectF glass = tube();
    const QColor strength = isEnabled() ? (beyond() ? colors().alarm : colors().accent) : colors().disabledText;
    const QRectF bulb(glass.center().x() - BulbWidth / 2, height() - BulbWidth - 1, BulbWidth, BulbWidth);
    if (unread()) {
        QPainterPath shape;
        shape.addRoundedRect(glass.adjusted(0, -4, 0, 4), TubeWidth / 2, TubeWidth / 2);
        QPainterPath foot;
        foot.addEllipse(bulb);
        return drawUnread(brush, shape.united(foot));
    }
    drawShape(brush, glass.adjusted(0, -4, 0, 4), TubeWidth / 2, colors().field, colors().outline, 1.5);
    drawShape(brush, bulb, BulbWidth / 2, colors().field, colors().outline, 1.5);
    drawShape(brush, bulb.adjusted(4, 4, -4, -4), BulbWidth / 2 - 4, strength, strength, 0);
    const double level = yOf(value_);
    drawShape(brush, QRectF(glass.left() + 4, level, TubeWidth - 8, bulb.center().y() - level), 2, strength, strength,
              0);
    if (value_ > highest_)
        drawArrow(brush, QRectF(glass.left(), 0, glass.width(), glass.top() - 5), Arrow::Up, strength);
}

QString ThermometerView::valueInWords() const {
    const QString number = toQt(formatShort(value_));
    return beyond() ? outOfRange(number) : number;
}

}  // namespace kestrel::qt

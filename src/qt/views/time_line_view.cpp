// Shows what runs when.
#include "qt/views/time_line_view.h"

#include <algorithm>
#include <cmath>

#include "platform/numbers.h"
#include "qt/style/drawing.h"
#include "qt/style/scale.h"

namespace kestrel::qt {

namespace {

constexpr int LeastLetters = 30;  ///< of the width
constexpr double TenthsInASecond = 10;

}  // namespace

TimeLineView::TimeLineView(TimeLine& line) : View(line) { setPolicy(QSizePolicy::Expanding, QSizePolicy::Fixed); }

void TimeLineView::showState() {
    const bool resized = lanes_.size() != model().Lanes.get().size();
    bool renamed = resized;
    for (std::size_t i = 0; !renamed && i < lanes_.size(); ++i) renamed = lanes_[i].name != model().Lanes.get()[i].name;
    if (lanes_ == model().Lanes.get() && end_ == model().End) return;
    lanes_ = model().Lanes;
    end_ = model().End;
    if (renamed) updateGeometry();
    valueShown();
}

QString TimeLineView::valueInWords() const {
    const std::string runs = model().text();
    return runs.empty() ? dash() : toQt(runs);
}

QSize TimeLineView::sizeHint() const {
    const auto lines = static_cast<int>(lanes_.size()) + 1;
    return {fontMetrics().averageCharWidth() * LeastLetters, lines * fontMetrics().height() + GridStep};
}

QRectF TimeLineView::plot() const {
    int names = 0;
    for (const TimeLine::Lane& lane : lanes_) names = std::max(names, fontMetrics().horizontalAdvance(toQt(lane.name)));
    return QRectF(rect()).adjusted(names + GridStep, 0, -2.0 * GridStep, -fontMetrics().height() - GridStep / 2.0);
}

void TimeLineView::paintEvent(QPaintEvent* /*event*/) {
    if (lanes_.empty()) return;
    Brush brush(*this);
    const QRectF place = plot();
    paintScale(brush, place);
    const double line = fontMetrics().height();
    for (std::size_t i = 0; i < lanes_.size(); ++i)
        paintLane(brush, lanes_[i], QRectF(place.left(), static_cast<double>(i) * line, place.width(), line));
}

void TimeLineView::paintScale(Brush& brush, const QRectF& place) const {
    const double seconds = end_ / TenthsInASecond;
    const double step = roundStep(seconds, std::max(2, static_cast<int>(place.width() / (4.0 * GridStep))));
    brush.setPen(isEnabled() ? colors().quietText : colors().disabledText);
    for (int i = 0; i * step <= seconds; ++i) {
        const double x = std::round(place.left() + i * step / seconds * place.width());
        brush.fillRect(QRectF(x, place.top(), 1, place.height()), colors().line);
        brush.drawText(QRectF(x - 3.0 * GridStep, place.bottom() + 2, 6.0 * GridStep, fontMetrics().height()),
                       static_cast<int>(Qt::AlignCenter), toQt(formatShort(i * step)));
    }
}

void TimeLineView::paintLane(Brush& brush, const TimeLine::Lane& lane, const QRectF& place) const {
    const bool runs = lane.time > 0;
    brush.setPen(runs && isEnabled() ? colors().text : colors().disabledText);
    brush.drawText(QRectF(0, place.top(), place.left(), place.height()),
                   static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), toQt(lane.name));
    if (!runs) return;
    const auto x = [&](int tenths) { return place.left() + place.width() * tenths / std::max(1, end_); };
    const QRectF block = place.adjusted(0, 2, 0, -2);
    if (lane.delay > 0)
        drawShape(brush, QRectF(x(0), block.top() + 3, x(lane.delay) - x(0), block.height() - 6), 1, colors().field,
                  colors().outline);
    const QColor strength = isEnabled() ? colors().accent : colors().disabledText;
    drawShape(brush, QRectF(x(lane.delay), block.top(), std::max(2.0, x(lane.end()) - x(lane.delay)), block.height()),
              2, strength, strength, 0);
}

}  // namespace kestrel::qt

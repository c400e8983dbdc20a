// Shows a slider switch.
#include "qt/views/slider_view.h"

#include <QMouseEvent>
#include <algorithm>
#include <numeric>

#include "qt/style/drawing.h"

namespace kestrel::qt {

namespace {

constexpr int MostSegments = 8;
constexpr int LeastSegment = 28;
constexpr int SegmentMargin = 20;
constexpr int Inset = 3;  // from the widget to its shape, room for the focus ring

}  // namespace

std::vector<int> SliderSwitchView::segments() const {
    std::vector<int> widths;
    if (model().isList) return widths;
    for (const QString& label : labels())
        widths.push_back(std::max(LeastSegment, fontMetrics().horizontalAdvance(label) + SegmentMargin));
    const int limit = fontMetrics().height() * 26;
    const bool fits = labels().size() <= MostSegments && std::accumulate(widths.begin(), widths.end(), 0) <= limit;
    return fits ? widths : std::vector<int>();
}

QRectF SliderSwitchView::body() const {
    const double above = (height() - (rowHeight(*this) - 6)) / 2.0;
    return QRectF(rect()).adjusted(Inset, above, -Inset, -above);
}

double SliderSwitchView::arrowWidth() const { return std::max(22.0, fontMetrics().height() * 1.4); }

QSize SliderSwitchView::sizeHint() const {
    const std::vector<int> widths = segments();
    const int compact = widestLabel() + 2 * GridStep + static_cast<int>(2 * arrowWidth());
    const int inside = widths.empty() ? compact : std::accumulate(widths.begin(), widths.end(), 0);
    return {inside + 2 * Inset, rowHeight(*this)};
}

void SliderSwitchView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    const QColor face = isEnabled() ? colors().button : colors().panel;
    if (unread())
        drawUnread(brush, body());
    else
        drawShape(brush, body(), CornerRadius, face, outOfRange() ? colors().alarm : colors().outline);
    if (const std::vector<int> widths = segments(); widths.empty())
        paintCompact(brush);
    else
        paintSegments(brush, widths);
    drawMarks(brush, *this, body());
}

void SliderSwitchView::paintSegments(Brush& brush, const std::vector<int>& widths) const {
    QRectF segment = body();
    for (int i = 0; i <= top(); ++i) {
        segment.setWidth(widths[static_cast<std::size_t>(i)]);
        const bool chosen = isChosen(i);
        if (chosen) {
            const QColor fill = isEnabled() ? colors().accent : colors().panel;
            drawShape(brush, segment, CornerRadius, fill, isEnabled() ? colors().accent : colors().disabledText, 2);
        } else if (i > 0 && !isChosen(i - 1)) {
            brush.fillRect(QRectF(segment.left(), segment.top() + 6, 1, segment.height() - 12), colors().line);
        }
        brush.setPen(chosen && isEnabled() ? colors().onAccent : unread() ? colors().disabledText : textColor(*this));
        brush.drawText(segment, static_cast<int>(Qt::AlignCenter), labels()[i]);
        segment.moveLeft(segment.right());
    }
}

void SliderSwitchView::paintCompact(Brush& brush) const {
    const QRectF shape = body();
    const double end = arrowWidth();
    const auto ink = [this](bool dead) { return dead || unread() ? colors().line : textColor(*this); };
    drawArrow(brush, {shape.left(), shape.top(), end, shape.height()}, Arrow::Left, ink(position() <= 0));
    drawArrow(brush, {shape.right() - end, shape.top(), end, shape.height()}, Arrow::Right, ink(position() >= top()));
    brush.setPen(outOfRange() ? colors().alarm : textColor(*this));
    brush.drawText(shape, static_cast<int>(Qt::AlignCenter), positionText());
}

void SliderSwitchView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    const double x = event->position().x() - body().left();
    const std::vector<int> widths = segments();
    if (widths.empty()) {
        if (x < arrowWidth()) return stepBy(-1);
        if (x > body().width() - arrowWidth()) return stepBy(1);
        return openMenu();
    }
    double end = 0;
    for (int i = 0; i <= top(); ++i) {
        end += widths[static_cast<std::size_t>(i)];
        if (x < end || i == top()) return choose(i);
    }
}

}  // namespace kestrel::qt

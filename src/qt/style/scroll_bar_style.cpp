// How the toolkit's scroll bars are laid out and drawn.
#include "qt/style/scroll_bar_style.h"

#include <algorithm>

#include "qt/style/drawing.h"

namespace kestrel::qt {

namespace {

constexpr int ShortestHandle = 32;
constexpr int NarrowestEnd = 22;
constexpr int BarHandle = 12;
constexpr int TallestHandle = 20;

}  // namespace

QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part) {
    const bool level = bar.orientation == Qt::Horizontal;
    const int length = level ? bar.rect.width() : bar.rect.height();
    const int steps = bar.maximum - bar.minimum;
    int handle = length;
    if (steps > 0) {
        const double shown = static_cast<double>(bar.pageStep) / (static_cast<double>(steps) + bar.pageStep);
        handle = std::min(length, std::max(ShortestHandle, static_cast<int>(shown * length)));
    }
    const int from =
        QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition, length - handle, bar.upsideDown);
    const auto stretch = [&](int start, int extent) {
        return level ? QRect(bar.rect.x() + start, bar.rect.y(), extent, bar.rect.height())
                     : QRect(bar.rect.x(), bar.rect.y() + start, bar.rect.width(), extent);
    };
    switch (part) {
        case QStyle::SC_ScrollBarGroove:
            return bar.rect;
        case QStyle::SC_ScrollBarSlider:
            return stretch(from, handle);
        case QStyle::SC_ScrollBarSubPage:
            return stretch(0, from);
        case QStyle::SC_ScrollBarAddPage:
            return stretch(from + handle, length - from - handle);
        default:
            return {};
    }
}

QRect barPart(const QStyleOptionSlider& bar, QStyle::SubControl part, const QWidget& widget) {
    const int end = std::max(NarrowestEnd, widget.fontMetrics().height() * 7 / 5);
    const QRect groove = bar.rect.adjusted(end, 0, -end, 0);
    const int at = groove.left() + QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                                   groove.width() - BarHandle, bar.upsideDown);
    const int tall = std::min(TallestHandle, groove.height() - 10);
    switch (part) {
        case QStyle::SC_ScrollBarGroove:
            return groove;
        case QStyle::SC_ScrollBarSlider:
            return {at, groove.top() + (groove.height() - tall) / 2, BarHandle, tall};
        case QStyle::SC_ScrollBarSubPage:
            return {groove.left(), groove.top(), at - groove.left(), groove.height()};
        case QStyle::SC_ScrollBarAddPage:
            return {at + BarHandle, groove.top(), groove.right() + 1 - at - BarHandle, groove.height()};
        case QStyle::SC_ScrollBarSubLine:
            return {bar.rect.left(), bar.rect.top(), end, bar.rect.height()};
        case QStyle::SC_ScrollBarAddLine:
            return {groove.right() + 1, bar.rect.top(), end, bar.rect.height()};
        default:
            return {};
    }
}

void drawScrollBar(const QStyleOptionSlider& bar, QPainter& painter) {
    painter.fillRect(bar.rect, colors().panel);
    if (bar.maximum <= bar.minimum) return;
    const bool held = (bar.state & QStyle::State_Sunken) && (bar.activeSubControls & QStyle::SC_ScrollBarSlider);
    const QRectF handle = QRectF(scrollBarPart(bar, QStyle::SC_ScrollBarSlider)).adjusted(4, 4, -4, -4);
    const QColor face = held ? colors().accent : colors().outline;
    drawShape(painter, handle, std::min(handle.width(), handle.height()) / 2, face, face, 0);
}

}  // namespace kestrel::qt

// How the toolkit's scroll bars are laid out and drawn.
#include "qt/style/scroll_bar_style.h"

#include <algorithm>

#include "qt/style/drawing.h"

namespace kestrel::qt {

namespace {

constexpr int ShortestHandle = 32;

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

void drawScrollBar(const QStyleOptionSlider& bar, QPainter& painter) {
    painter.fillRect(bar.rect, colors().panel);
    if (bar.maximum <= bar.minimum) return;
    const bool held = (bar.state & QStyle::State_Sunken) && (bar.activeSubControls & QStyle::SC_ScrollBarSlider);
    const QRectF handle = QRectF(scrollBarPart(bar, QStyle::SC_ScrollBarSlider)).adjusted(4, 4, -4, -4);
    const QColor face = held ? colors().accent : colors().outline;
    drawShape(painter, handle, std::min(handle.width(), handle.height()) / 2, face, face, 0);
}

}  // namespace kestrel::qt

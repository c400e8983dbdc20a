// How the title bars of the pages are drawn.
#include "qt/window/title_bar_style.h"

#include <QFontMetrics>
#include <QPainter>
#include <cmath>

#include "qt/style/drawing.h"

namespace kestrel::qt {

namespace {

void drawSign(QPainter& painter, const QRectF& place, QStyle::SubControl button, const QColor& color) {
    const QPointF c(std::round(place.center().x()), std::round(place.center().y()));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
    switch (button) {
        case QStyle::SC_TitleBarMinButton:
            painter.drawLine(c + QPointF(-4, 4), c + QPointF(4, 4));
            break;
        case QStyle::SC_TitleBarMaxButton:
            painter.drawRect(QRectF(c - QPointF(4, 4), QSizeF(8, 8)));
            break;
        case QStyle::SC_TitleBarNormalButton:
            painter.drawRect(QRectF(c - QPointF(4, 2), QSizeF(6, 6)));
            painter.drawPolyline(QPolygonF({c + QPointF(-2, -4.5), c + QPointF(4.5, -4.5), c + QPointF(4.5, 2)}));
            break;
        default:
            painter.drawLine(c + QPointF(-4, -4), c + QPointF(4, 4));
            painter.drawLine(c + QPointF(-4, 4), c + QPointF(4, -4));
            break;
    }
}

/// The toolkit offers a place for a button that the window has not, too.
bool has(const QStyleOptionTitleBar& bar, QStyle::SubControl button) {
    const bool minimized = bar.titleBarState & Qt::WindowMinimized;
    const bool maximized = bar.titleBarState & Qt::WindowMaximized;
    switch (button) {
        case QStyle::SC_TitleBarMinButton:
            return (bar.titleBarFlags & Qt::WindowMinimizeButtonHint) && !minimized;
        case QStyle::SC_TitleBarMaxButton:
            return (bar.titleBarFlags & Qt::WindowMaximizeButtonHint) && !maximized;
        case QStyle::SC_TitleBarNormalButton:
            return minimized || maximized;
        default:
            return bar.titleBarFlags & Qt::WindowSystemMenuHint;
    }
}

}  // namespace

void drawTitleBar(const QStyleOptionTitleBar& bar, QPainter& painter, const QStyle& style, const QWidget* widget) {
    const bool active = bar.titleBarState & QStyle::State_Active;
    const QColor ground = active ? colors().title : colors().line;
    const QColor ink = active ? colors().onTitle : colors().text;
    painter.fillRect(bar.rect, ground);
    const auto place = [&](QStyle::SubControl part) {
        return style.subControlRect(QStyle::CC_TitleBar, &bar, part, widget);
    };
    if (!bar.icon.isNull()) bar.icon.paint(&painter, place(QStyle::SC_TitleBarSysMenu).adjusted(4, 4, -4, -4));
    painter.setPen(ink);
    const QRect label = place(QStyle::SC_TitleBarLabel).adjusted(GridStep, 0, -GridStep, 0);
    painter.drawText(label, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
                     painter.fontMetrics().elidedText(bar.text, Qt::ElideRight, label.width()));
    for (const QStyle::SubControl button : {QStyle::SC_TitleBarMinButton, QStyle::SC_TitleBarMaxButton,
                                            QStyle::SC_TitleBarNormalButton, QStyle::SC_TitleBarCloseButton}) {
        if (!has(bar, button)) continue;
        const QRectF spot = place(button);
        const bool under = (bar.activeSubControls & button) && (bar.state & QStyle::State_MouseOver);
        if (under) drawShape(painter, spot.adjusted(2, 2, -2, -2), CornerRadius, Qt::transparent, ink);
        drawSign(painter, spot, button, ink);
    }
}

}  // namespace kestrel::qt

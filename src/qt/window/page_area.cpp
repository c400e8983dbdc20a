// The area of the frame window in which pages stand.
#include "qt/window/page_area.h"

#include <QApplication>
#include <QEvent>
#include <QMdiSubWindow>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <utility>
#include <vector>

namespace kestrel::qt {

PageArea::PageArea(std::unique_ptr<QSvgRenderer> picture) : picture_(std::move(picture)) {
    if (picture_) picture_->setAspectRatioMode(Qt::KeepAspectRatioByExpanding);
    qApp->removeEventFilter(this);  // its own keys; the entries of the window menu have theirs
    setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

QPoint PageArea::reachable(QPoint wanted, QSize size) const {
    const QSize room = viewport()->size();
    const int titleHeight = style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const int rightmost = std::max(0, room.width() - std::min(size.width(), room.width()));
    const int lowest = std::max(0, room.height() - std::max(titleHeight, std::min(size.height(), room.height())));
    return {std::clamp(wanted.x(), 0, rightmost), std::clamp(wanted.y(), 0, lowest)};
}

QPoint PageArea::besideOthers(const QMdiSubWindow& page) const {
    const QRect own = page.geometry();
    const QRect room = viewport()->rect();
    std::vector<QRect> others;
    for (const QMdiSubWindow* each : subWindowList())
        if (each != &page && each->isVisible() && !each->isMinimized() && !each->isMaximized())
            others.push_back(each->geometry());
    std::vector<QPoint> places{own.topLeft()};
    const QSize left = room.size() - own.size();
    for (const int x : {0, left.width()})
        for (const int y : {0, left.height()}) places.emplace_back(x, y);
    for (const QRect& each : others)
        for (const QPoint place :
             {QPoint(each.right() + 1, each.top()), QPoint(each.left() - own.width(), each.top()),
              QPoint(each.left(), each.bottom() + 1), QPoint(each.left(), each.top() - own.height())})
            places.push_back(place);
    const auto covered = [&](QPoint place) {
        qint64 area = 0;
        for (const QRect& each : others) {
            const QRect both = each & QRect(place, own.size());
            area += static_cast<qint64>(both.width()) * both.height();
        }
        return area;
    };
    const auto cost = [&](QPoint place) {
        return std::pair(covered(place), (place - own.topLeft()).manhattanLength());
    };
    std::erase_if(places, [&](QPoint place) { return place != own.topLeft() && !room.contains({place, own.size()}); });
    return *std::min_element(places.begin(), places.end(),
                             [&](QPoint one, QPoint other) { return cost(one) < cost(other); });
}

void PageArea::paintEvent(QPaintEvent* event) {
    if (!picture_) {
        QMdiArea::paintEvent(event);
        return;
    }
    QPainter(viewport()).drawPixmap(0, 0, background());
}

const QPixmap& PageArea::background() {
    const qreal ratio = devicePixelRatioF();
    const QSize size = viewport()->size() * ratio;
    if (painted_.size() != size) {
        painted_ = QPixmap(size);
        painted_.fill(palette().color(QPalette::Window));
        QPainter painter(&painted_);
        picture_->render(&painter, QRectF(QPointF(0, 0), QSizeF(size)));
        painter.end();
        painted_.setDevicePixelRatio(ratio);
    }
    return painted_;
}

void PageArea::changeEvent(QEvent* event) {
    QMdiArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) painted_ = {};
}

void PageArea::resizeEvent(QResizeEvent* event) {
    QMdiArea::resizeEvent(event);
    for (QMdiSubWindow* page : subWindowList())
        if (!page->isMaximized()) page->move(reachable(page->pos(), page->size()));
}

}  // namespace kestrel::qt

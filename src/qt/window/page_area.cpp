// The area of the frame window in which pages stand.
#include "qt/window/page_area.h"

#include <QApplication>
#include <QEvent>
#include <QMdiSubWindow>
#include <QPainter>
#include <QStyle>
#include <algorithm>

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

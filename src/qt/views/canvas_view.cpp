// Shows a drawing and the controls on it.
#include "qt/views/canvas_view.h"

#include <QEvent>
#include <QPainter>

#include "qt/views/pictures.h"

namespace kestrel::qt {

namespace {

/// Height of a text line for which the drawings are made, in their own units.
constexpr double LineOfDrawing = 16.0;
constexpr double Smallest = 0.6;  // of the natural size

}  // namespace

CanvasView::CanvasView(Picture& picture) : View(picture), drawing_(loadPicture(toQt(picture.drawing()))) {
    setPolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void CanvasView::place(QWidget* widget, const QString& element) {
    widget->setParent(this);
    placed_.push_back({widget, element});
}

QSize CanvasView::sizeHint() const {
    const QSizeF natural = drawing_ ? QSizeF(drawing_->defaultSize()) : QSizeF(240, 160);
    return (natural * (fontMetrics().height() / LineOfDrawing)).toSize();
}

QSize CanvasView::minimumSizeHint() const { return sizeHint() * Smallest; }

QRectF CanvasView::drawn() const {
    if (!drawing_) return rect();
    const QSizeF fitting = QSizeF(drawing_->defaultSize()).scaled(QSizeF(size()), Qt::KeepAspectRatio);
    return {(width() - fitting.width()) / 2, (height() - fitting.height()) / 2, fitting.width(), fitting.height()};
}

QRectF CanvasView::placeOf(const QString& element) const {
    const QRectF bounds = drawing_->transformForElement(element).mapRect(drawing_->boundsOnElement(element));
    const QRectF whole = drawing_->viewBoxF();
    const QRectF target = drawn();
    const double scale = target.width() / whole.width();
    return {target.topLeft() + (bounds.topLeft() - whole.topLeft()) * scale, bounds.size() * scale};
}

void CanvasView::arrange() {
    int lost = 0;
    for (const Placed& each : placed_) {
        if (!drawing_ || !drawing_->elementExists(each.element)) {
            const QSize size = each.widget->sizeHint();
            each.widget->setGeometry(QRect(QPoint(0, lost), size));
            lost += size.height();
            continue;
        }
        QRectF place = placeOf(each.element);
        // What has a least size (a text, a number) keeps it, in the middle of its place.
        const QPointF centre = place.center();
        place.setSize(place.size().expandedTo(QSizeF(each.widget->minimumSizeHint())));
        place.moveCenter(centre);
        each.widget->setGeometry(place.toAlignedRect());
    }
}

void CanvasView::resizeEvent(QResizeEvent* event) {
    View::resizeEvent(event);
    rendered_ = QPixmap();
    arrange();
}

bool CanvasView::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) arrange();
    return View::event(event);
}

void CanvasView::paintEvent(QPaintEvent* /*event*/) {
    if (!drawing_) return;
    const double ratio = devicePixelRatioF();
    if (rendered_.isNull() || rendered_.devicePixelRatio() != ratio) {
        rendered_ = QPixmap((drawn().size() * ratio).toSize());
        rendered_.setDevicePixelRatio(ratio);
        rendered_.fill(Qt::transparent);
        QPainter painter(&rendered_);
        drawing_->render(&painter, QRectF(QPointF(0, 0), drawn().size()));
    }
    QPainter(this).drawPixmap(drawn().topLeft(), rendered_);
}

}  // namespace kestrel::qt

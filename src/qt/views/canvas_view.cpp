// Shows a drawing and the controls on it.
#include "qt/views/canvas_view.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>

#include "qt/style/palette.h"
#include "qt/views/lamp_view.h"
#include "qt/views/pictures.h"

namespace kestrel::qt {

namespace {

/// Height of a text line for which the drawings are made, in their own units.
constexpr double LineOfDrawing = 16.0;
constexpr double Smallest = 0.6;  // of the natural size
/// Size of the lamps' names in the drawings' own units.
constexpr double NameSize = 12.5;

const QByteArray Hidden = QByteArrayLiteral(" display=\"none\"");

/// How the part begins that a drawing shows while the lamp on that element is lit.
QByteArray litPart(const QString& element) { return "id=\"lit." + element.toUtf8() + '"'; }

}  // namespace

CanvasView::CanvasView(Picture& picture)
    : View(picture), source_(pictureSource(toQt(picture.drawing()))), drawing_(loadPicture(toQt(picture.drawing()))) {
    setPolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void CanvasView::place(QWidget* widget, const QString& element) {
    widget->setParent(this);
    placed_.push_back({widget, element});
    auto* lamp = dynamic_cast<LampView*>(widget);
    if (lamp && source_.contains(litPart(element))) lamp->whenSwitched([this] { drawLit(); });
}

void CanvasView::drawLit() {
    if (!drawing_) return;
    QByteArray source = source_;
    for (const Placed& each : placed_) {
        const auto* lamp = dynamic_cast<const LampView*>(each.widget);
        if (lamp && lamp->lit()) source.replace(litPart(each.element) + Hidden, litPart(each.element));
    }
    drawing_->load(source);
    rendered_ = QPixmap();
    update();
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
    QPainter painter(this);
    painter.drawPixmap(drawn().topLeft(), rendered_);
    paintNames(painter);
}

/// A name stands on the side of its lamp on which the drawing has room for it.
void CanvasView::paintNames(QPainter& painter) const {
    QFont small = font();
    small.setPixelSize(std::max(8, static_cast<int>(NameSize * drawn().width() / drawing_->viewBoxF().width())));
    painter.setFont(small);
    painter.setPen(colors().text);
    for (const Placed& each : placed_) {
        const QString element = QStringLiteral("name.") + each.element;
        const auto* view = dynamic_cast<const ViewBase*>(each.widget);
        if (!view || !view->bound() || !drawing_->elementExists(element)) continue;
        const QRectF place = placeOf(element);
        const double lamp = placeOf(each.element).center().x();
        const auto side = place.left() > lamp    ? Qt::AlignLeft
                          : place.right() < lamp ? Qt::AlignRight
                                                 : Qt::AlignHCenter;
        painter.drawText(place, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextWordWrap, view->spokenName());
    }
}

}  // namespace kestrel::qt

// Shows a lamp.
#include "qt/views/lamp_view.h"

#include "qt/style/drawing.h"
#include "qt/views/lamp.h"
#include "qt/window/words.h"

namespace kestrel::qt {

LampView::LampView(Led& led) : View(led) { setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed); }

void LampView::showState() {
    if (lit_ == model().Active) return;
    lit_ = model().Active;
    valueShown();
    if (switched_) switched_();
}

QSize LampView::sizeHint() const {
    const int height = textHeight(*this);
    return {model().shape == Led::Shape::Round ? height : height + 4, height};
}

void LampView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    // In a row it keeps off its neighbours; on a drawing it fills its place.
    const double margin = height() < sizeHint().height() ? 0.5 : 3;
    const QRectF shape = QRectF(rect()).adjusted(1, margin, -1, -margin);
    const bool round = model().shape == Led::Shape::Round;
    unread() ? drawUnreadLamp(brush, shape, round) : drawLamp(brush, shape, round, lit_, isEnabled());
}

QString LampView::valueInWords() const { return word(lit_ ? Word::On : Word::Off); }

}  // namespace kestrel::qt

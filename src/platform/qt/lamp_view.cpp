// Shows a lamp.
// See lamp_view.h.
#include "platform/qt/lamp_view.h"

#include "platform/qt/drawing.h"
#include "platform/qt/lamp.h"
#include "platform/qt/words.h"

namespace kestrel::qt {

LampView::LampView(Led& led) : View(led) { setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed); }

void LampView::showState() {
    if (lit_ == model().Active) return;
    lit_ = model().Active;
    valueShown();
}

QSize LampView::sizeHint() const {
    const int height = textHeight(*this);
    return {model().shape == Led::Shape::Round ? height : height + 4, height};
}

void LampView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    drawLamp(brush, QRectF(rect()).adjusted(2, 3, -2, -3), model().shape == Led::Shape::Round, lit_, isEnabled());
}

QString LampView::spokenValue() const { return lit_ ? words::On : words::Off; }

}  // namespace kestrel::qt

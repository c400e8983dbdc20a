// Shows a command button.
#include "qt/views/button_view.h"

#include <QKeyEvent>

namespace kestrel::qt {

ButtonView::ButtonView(CommandButton& button) : View(button) {
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, [this] { press(); });
}

void ButtonView::showState() {
    QString caption = toQt(model().Caption);
    caption.replace(u'&', QStringLiteral("&&"));
    if (caption != text()) setText(caption);
}

void ButtonView::press() {
    act([](CommandButton& button) { button.UserClick(); });
}

QSize ButtonView::sizeHint() const {
    const int width =
        fontMetrics().horizontalAdvance(QString(text()).replace(QStringLiteral("&&"), QStringLiteral("&")));
    return {std::max(width + 4 * GridStep, rowHeight(*this) * 2), rowHeight(*this)};
}

void ButtonView::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || event->isAutoRepeat()) return View::keyPressEvent(event);
    click();
}

}  // namespace kestrel::qt

// Shows a text box.
#include "qt/views/text_box_view.h"

#include <QKeyEvent>
#include <algorithm>

#include "qt/style/drawing.h"

namespace kestrel::qt {

TextBoxView::TextBoxView(TextBox& box) : View(box) {
    setMaxLength(box.maxLength);
    setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setTextMargins(GridStep - 2, 0, GridStep - 2, 0);
    connect(this, &QLineEdit::textEdited, this, [this] { edited_ = true; });
}

void TextBoxView::showState() {
    setReadOnly(unread());
    // What the user types, or has entered and the model has not taken yet, is not taken away by a value of the board.
    if (!edited_ && !model().actWaits()) showModel();
}

void TextBoxView::showModel() {
    const QString text = unread() ? QString() : toQt(model().Text);
    if (text != this->text()) setText(text);
}

void TextBoxView::renamed() {
    if (const QString name = spokenName(); name != accessibleName()) setAccessibleName(name);
    if (const QString about = spokenDescription(); about != accessibleDescription()) setAccessibleDescription(about);
}

QSize TextBoxView::sizeHint() const {
    const int letters = std::clamp(model().maxLength, 4, 24);
    return {fontMetrics().horizontalAdvance(u'0') * letters + 4 * GridStep, rowHeight(*this)};
}

void TextBoxView::commit(void (TextBox::*action)()) {
    const std::string typed = text().toStdString();
    const bool changed = edited_;
    edited_ = false;
    const bool isDone = act([&](TextBox& box) {
        if (changed) box.UserType(typed);
        (box.*action)();
    });
    if (isDone && bound()) showModel();
}

void TextBoxView::leave() {
    if (!entered_) return;
    entered_ = false;
    commit(&TextBox::UserLeave);
}

void TextBoxView::dropTyping() {
    entered_ = false;
    edited_ = false;
    showModel();
}

void TextBoxView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (!event->isAutoRepeat()) commit(&TextBox::UserEnter);
    } else if (event->key() == Qt::Key_Escape && edited_) {
        edited_ = false;
        showModel();
    } else if (event->modifiers() & Qt::AltModifier && !event->text().isEmpty()) {
        event->ignore();
    } else {
        View::keyPressEvent(event);
    }
}

void TextBoxView::focusInEvent(QFocusEvent* event) {
    entered_ = true;
    View::focusInEvent(event);
}

void TextBoxView::focusOutEvent(QFocusEvent* event) {
    View::focusOutEvent(event);
    if (isLeaving(*this, *event)) leave();
}

void TextBoxView::paintEvent(QPaintEvent* event) {
    const QRectF shape = QRectF(rect()).adjusted(3, 3, -3, -3);
    if (!unread()) View::paintEvent(event);
    Brush brush(*this);
    if (!unread()) return drawStanding(brush, *this, shape);
    drawUnread(brush, shape);
    drawMarks(brush, *this, shape);
    brush.setPen(colors().quietText);
    brush.drawText(shape.adjusted(GridStep, 0, 0, 0), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), dash());
}

}  // namespace kestrel::qt

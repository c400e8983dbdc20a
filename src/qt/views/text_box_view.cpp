// Shows a text box.
#include "qt/views/text_box_view.h"

#include <QKeyEvent>
#include <QRegularExpressionValidator>
#include <QToolTip>
#include <algorithm>

#include "qt/style/drawing.h"
#include "qt/window/words.h"

namespace kestrel::qt {

TextBoxView::TextBoxView(TextBox& box) : View(box) {
    setMaxLength(box.maxLength);
    setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setTextMargins(GridStep - 2, 0, GridStep - 2, 0);
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) { typed(text); });
    connect(this, &QLineEdit::inputRejected, this,
            [this] { explain(text().size() >= maxLength() ? Objection::TooLong : Objection::NoNumber); });
    if (box.isNumeric()) {
        static const QRegularExpression figures(QStringLiteral("[0-9]*"));
        setValidator(new QRegularExpressionValidator(figures, this));
    }
}

void TextBoxView::showState() {
    setReadOnly(unread());
    setEchoMode(model().Concealed ? Password : Normal);
    // What the user types, or has entered and the model has not taken yet, is not taken away by a value of the board.
    if (!edited_ && !model().actWaits()) showModel();
}

QString TextBoxView::shownText() const {
    if (unread()) return {};
    const QString has = toQt(model().boardsText());
    const QString wanted = toQt(model().wantedText());
    if (!hasFocus() && standing() == Standing::Waiting && has != wanted) return changing(has, wanted);
    if (!hasFocus() && standing() == Standing::NotTaken && has != wanted) return unlike(has, wanted);
    return toQt(model().Text);
}

void TextBoxView::showModel() {
    if (const QString text = shownText(); text != this->text()) setText(text);
    showColor(standingColor(*this));
}

void TextBoxView::showColor(const QColor& ink) {
    if (ink == palette().color(QPalette::Text)) return;
    QPalette own = palette();
    own.setColor(QPalette::Text, ink);
    setPalette(own);
}

void TextBoxView::typed(const QString& text) {
    edited_ = true;
    if (!bound()) return;
    const Objection objection = model().objectionTo(text.toStdString());
    showColor(objection == Objection::None ? colors().text : readableText(colors().alarm));
    if (objection == Objection::TooLong || objection == Objection::OutOfRange) explain(objection);
}

void TextBoxView::explain(Objection objection) {
    if (!bound() || objection == Objection::None) return;
    if (const auto limits = model().entryLimits())
        QToolTip::showText(mapToGlobal(QPoint(0, height())), objectionInWords(objection, *limits), this);
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
    if (changed && bound()) explain(model().objectionTo(typed));
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
    if (!edited_ && bound()) showModel();
}

void TextBoxView::focusOutEvent(QFocusEvent* event) {
    View::focusOutEvent(event);
    if (isLeaving(*this, *event)) leave();
    if (!edited_ && bound()) showModel();
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

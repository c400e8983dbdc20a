// Shows the figure of a bar as a field.
#include "qt/views/field_view.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QStyleOptionSpinBox>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <functional>

#include "qt/style/drawing.h"
#include "qt/style/spin_box_style.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

constexpr int WheelNotch = 120;
constexpr int Margin = 7;  ///< between the edge of the field and its figure

bool isPartOfNumber(QChar letter) {
    return (letter >= u'0' && letter <= u'9') || QStringLiteral(".,+-:").contains(letter);
}

}  // namespace

FieldView::FieldView(Label& figure) : View(figure) {
    setButtonSymbols(bar().isWide() ? PlusMinus : NoButtons);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setPolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    lineEdit()->installEventFilter(this);
    connect(lineEdit(), &QLineEdit::textEdited, this,
            [this](const QString& text) { actOnBar([&text](ScrollBar& bar) { bar.UserType(text.toStdString()); }); });
}

bool FieldView::isOpen() const { return bound() && bar().Enabled && bar().Visible && !unread(); }

void FieldView::showState() {
    if (isReadOnly() == isOpen()) setReadOnly(!isOpen());
    setFocusPolicy(bar().Enabled && bar().Visible ? Qt::StrongFocus : Qt::NoFocus);
    if (!bar().typed()) showText();
    showColor();
}

QString FieldView::plainText() const { return toQt(bar().numberOf(bar().shownValue())); }

QString FieldView::shownText() const {
    if (!bound()) return text_;
    if (unread()) return dash();
    if (bar().typed()) return toQt(*bar().typed());
    const QString has = toQt(model().Caption);
    if (bar().isMoving() || bar().actWaits()) return changing(has, toQt(bar().textOf(bar().shownValue())));
    if (standing() == Standing::Waiting && toQt(model().wantedText()) != has)
        return changing(has, toQt(model().wantedText()));
    if (standing() == Standing::NotTaken && !model().notTaken()->copyOnly)
        return unlike(has, toQt(model().wantedText()));
    const std::string& unit = model().Unit;
    const QString whole = unit.empty() ? has : has + u' ' + toQt(unit);
    return widthFor(whole) <= width() ? whole : has;
}

void FieldView::showText() {
    const QString text = isPlain_ ? plainText() : shownText();
    if (text != text_) {
        text_ = text;
        valueShown();
    }
    if (text == lineEdit()->text()) return;
    lineEdit()->setText(text);
    if (hasFocus()) lineEdit()->selectAll();
}

void FieldView::showColor() {
    const bool isWrong = bar().typed() && bar().objectionTo(*bar().typed()) != Objection::None;
    const bool isLocked = standing() == Standing::Confirmed && !bar().Enabled;
    const QColor ink = isWrong         ? readableText(colors().alarm)
                       : bar().typed() ? colors().text
                       : isLocked      ? colors().disabledText
                                       : standingColor(*this);
    if (old() != lineEdit()->font().italic()) lineEdit()->setFont(old() ? oldFont(font()) : font());
    if (ink == ink_) return;
    ink_ = ink;
    QPalette palette = lineEdit()->palette();
    palette.setColor(QPalette::Text, ink);
    lineEdit()->setPalette(palette);
}

int FieldView::widthFor(const QString& text) const {
    const int buttons = buttonSymbols() == NoButtons ? 0 : 2 * spinButtonWidth(*this);
    return figuresWidth(fontMetrics(), text) + 2 * Margin + 4 + buttons;
}

QSize FieldView::minimumSizeHint() const {
    const std::string& unit = model().widestUnit.empty() ? model().Unit.get() : model().widestUnit;
    const QString widest = toQt(model().widest.empty() ? bar().textOf(bar().Max) : model().widest);
    return {widthFor(unit.empty() ? widest : widest + u' ' + toQt(unit)), rowHeight(*this)};
}

QSize FieldView::sizeHint() const {
    const QString widest = toQt(model().widest.empty() ? bar().textOf(bar().Max) : model().widest);
    return minimumSizeHint().expandedTo({widthFor(changing(widest, widest)), 0});
}

QString FieldView::ownTip() const {
    const std::string& unit = model().Unit;
    const QString whole = shownText() == toQt(model().Caption) && !unit.empty() ? text_ + u' ' + toQt(unit) : text_;
    const bool isCutOff = !unread() && !bar().typed() && widthFor(whole) > width();
    return isCutOff ? whole : ViewBase::ownTip();
}

QAbstractSpinBox::StepEnabled FieldView::stepEnabled() const {
    if (!isOpen()) return StepNone;
    StepEnabled result = StepNone;
    if (bar().shownValue() > bar().Min) result |= StepDownEnabled;
    if (bar().shownValue() < bar().Max) result |= StepUpEnabled;
    return result;
}

void FieldView::stepBy(int steps) {
    actOnBar([steps](ScrollBar& bar) {
        bar.UserDropTyped();
        bar.UserStepOn(steps);
    });
}

void FieldView::mouseReleaseEvent(QMouseEvent* event) {
    View::mouseReleaseEvent(event);
    actOnBar(std::mem_fn(&ScrollBar::UserSettle));
}

void FieldView::wheelEvent(QWheelEvent* event) {
    if (!hasFocus() || !isOpen()) return event->ignore();
    wheelRest_ += event->angleDelta().y();
    const int notches = wheelRest_ / WheelNotch;
    wheelRest_ -= notches * WheelNotch;
    if (notches != 0) actOnBar([notches](ScrollBar& bar) { bar.UserStepBy(notches); });
    event->accept();
}

/// Until something is typed, keys step; then they move in the text.
bool FieldView::handledAsStep(const QKeyEvent& event) {
    const bool typing = bar().typed().has_value();
    int amount = 0;
    switch (event.key()) {
        case Qt::Key_Down:
            amount = -1;
            break;
        case Qt::Key_Up:
            amount = 1;
            break;
        case Qt::Key_PageDown:
            amount = -bar().LargeChange;
            break;
        case Qt::Key_PageUp:
            amount = bar().LargeChange;
            break;
        case Qt::Key_Left:
        case Qt::Key_Right:
            if (typing || isPlain_ || event.modifiers()) return false;
            amount = event.key() == Qt::Key_Left ? -1 : 1;
            break;
        case Qt::Key_Home:
        case Qt::Key_End:
            // One key must not set the end of a range that no one wants.
            if (typing || isPlain_) return false;
            if (!bar().isWide()) amount = (event.key() == Qt::Key_Home ? bar().Min : bar().Max) - bar().shownValue();
            break;
        default:
            return false;
    }
    if (isOpen() && amount != 0) stepBy(amount);
    return true;
}

void FieldView::keyPressEvent(QKeyEvent* event) {
    if (handledAsStep(*event)) return;
    const bool isCommand = (event->modifiers() & (Qt::AltModifier | Qt::MetaModifier)) && !event->text().isEmpty();
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!event->isAutoRepeat()) enter();
            return;
        case Qt::Key_Escape:
            if (!bar().typed() && !bar().isMoving()) return event->ignore();
            isPlain_ = false;
            return actOnBar(std::mem_fn(&ScrollBar::UserDrop));
        default:
            if (isCommand || !isOpen()) return event->ignore();
            if (writes(*event) && !isPartOfNumber(event->text().front())) return explain(Objection::NoNumber);
            View::keyPressEvent(event);
    }
}

void FieldView::keyReleaseEvent(QKeyEvent* event) {
    if (!event->isAutoRepeat() && bound() && bar().isHeld()) actOnBar(std::mem_fn(&ScrollBar::UserSettle));
    View::keyReleaseEvent(event);
}

void FieldView::enter() {
    bool isTaken = true;
    actOnBar([&isTaken](ScrollBar& bar) {
        isTaken = bar.UserEnter();
        bar.UserCommit();
    });
    if (!bound()) return;
    if (!isTaken) return explain(bar().objectionTo(*bar().typed()));
    isPlain_ = false;
    showText();
    lineEdit()->selectAll();
    if (goesOn_) focusNextPrevChild(true);
}

void FieldView::leave() {
    isPlain_ = false;
    actOnBar([](ScrollBar& bar) {
        bar.UserLeave();
        bar.UserCommit();
    });
}

void FieldView::explain(Objection objection) {
    if (const auto limits = bar().entryLimits())
        QToolTip::showText(mapToGlobal(QPoint(0, height())), objectionInWords(objection, *limits), this);
}

void FieldView::showPlain() {
    if (!isOpen() || bar().typed()) return;
    isPlain_ = true;
    showText();
}

bool FieldView::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && isOpen()) {
        setFocus(Qt::MouseFocusReason);
        showPlain();
    }
    if (event->type() == QEvent::MouseButtonRelease && std::exchange(isFresh_, false) && isOpen())
        lineEdit()->selectAll();
    return View::eventFilter(object, event);
}

void FieldView::focusInEvent(QFocusEvent* event) {
    View::focusInEvent(event);
    isFresh_ = event->reason() == Qt::MouseFocusReason;
    if (bound() && !bar().typed()) lineEdit()->selectAll();
    update();
}

void FieldView::focusOutEvent(QFocusEvent* event) {
    if (isLeaving(*this, *event))
        leave();
    else
        actOnBar(std::mem_fn(&ScrollBar::UserFinish));
    View::focusOutEvent(event);
    lineEdit()->deselect();
    update();
}

void FieldView::hideEvent(QHideEvent* event) {
    leave();
    View::hideEvent(event);
}

void FieldView::resizeEvent(QResizeEvent* event) {
    View::resizeEvent(event);
    if (bound()) showState();
}

void FieldView::dropTyping() { actOnBar(std::mem_fn(&ScrollBar::UserDropTyped)); }

void FieldView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    const QRectF shape = QRectF(rect()).adjusted(3, 3, -3, -3);
    if (isOpen()) {
        QStyleOptionSpinBox option;
        initStyleOption(&option);
        style()->drawComplexControl(QStyle::CC_SpinBox, &option, &brush, this);
    } else if (unread()) {
        drawUnread(brush, shape);
    }
    drawMarks(brush, *this, shape);
}

std::optional<ViewBase::Span> FieldView::span() const {
    if (!isOpen()) return std::nullopt;
    return Span{bar().Min, bar().Max, bar().shownValue(), 1};
}

void FieldView::moveTo(int value) {
    actOnBar([value](ScrollBar& bar) { bar.UserStepTo(value); });
}

}  // namespace kestrel::qt

// What a screen reader learns of the drawn views.
#include "qt/views/accessible.h"

#include <QAccessibleWidget>
#include <QScrollArea>

#include "qt/views/button_view.h"
#include "qt/views/list_view.h"
#include "qt/views/spoken_text.h"
#include "qt/views/view.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

class SpokenView : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit SpokenView(ViewBase& view) : QAccessibleWidget(&view.widget(), view.spokenRole()), view_(view) {}

    bool isValid() const override { return QAccessibleWidget::isValid() && view_.bound(); }

    QString text(QAccessible::Text kind) const override {
        switch (kind) {
            case QAccessible::Name:
                return view_.spokenName();
            case QAccessible::Value:
                return view_.spokenValue();
            case QAccessible::Description:
                return view_.spokenDescription();
            default:
                return QAccessibleWidget::text(kind);
        }
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        if (const auto checked = view_.checked()) {
            state.checkable = true;
            state.checked = *checked;
        }
        state.readOnly = !view_.span() && !view_.canPress();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface && view_.span()) return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QVariant currentValue() const override { return span().value; }
    void setCurrentValue(const QVariant& value) override { view_.moveTo(value.toInt()); }
    QVariant maximumValue() const override { return span().highest; }
    QVariant minimumValue() const override { return span().lowest; }
    QVariant minimumStepSize() const override { return span().step; }

    QStringList actionNames() const override {
        QStringList names;
        if (!widget()->isEnabled()) return names;
        if (view_.canPress()) names << pressAction();
        if (view_.span()) names << increaseAction() << decreaseAction();
        if (widget()->focusPolicy() != Qt::NoFocus) names << setFocusAction();
        return names;
    }
    void doAction(const QString& action) override {
        if (!widget()->isEnabled()) return;
        if (action == pressAction() && view_.canPress()) return view_.press();
        if (action == increaseAction() && view_.span()) return view_.moveTo(span().value + span().step);
        if (action == decreaseAction() && view_.span()) return view_.moveTo(span().value - span().step);
        QAccessibleWidget::doAction(action);
    }
    QStringList keyBindingsForAction(const QString& /*action*/) const override { return {}; }

  private:
    ViewBase::Span span() const { return view_.span().value_or(ViewBase::Span{}); }

    ViewBase& view_;
};

/// The views that are widgets of the toolkit keep its own interface.
bool isOfToolkit(const QObject& object) {
    return qobject_cast<const QTreeWidget*>(&object) || qobject_cast<const QPushButton*>(&object);
}

/// The toolkit's interface of a page counts on scroll bars that come and go, and ends the program when a client asks
/// for one that has gone.
QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    if (auto* page = qobject_cast<QScrollArea*>(object)) return new QAccessibleWidget(page, QAccessible::Client);
    if (auto* line = qobject_cast<QLineEdit*>(object)) return new SpokenText(*line);
    auto* view = dynamic_cast<ViewBase*>(object);
    return view && view->bound() && !isOfToolkit(*object) ? new SpokenView(*view) : nullptr;
}

}  // namespace

void installAccessibility() { QAccessible::installFactory(makeInterface); }

}  // namespace kestrel::qt

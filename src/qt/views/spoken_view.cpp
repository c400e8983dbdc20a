// What a screen reader learns of a view.
#include "qt/views/spoken_view.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

#include "link/loaded_pages.h"
#include "platform/displays.h"
#include "platform/names_on_page.h"
#include "qt/window/access_words.h"

namespace kestrel::qt {

namespace {

constexpr double DecimalBase = 10;

/// What stands on a drawing: the lamps that are lit, then the gauges with their figures.
QString drawingInWords(const QWidget& drawing) {
    QStringList lit, gauges;
    bool anyLamp = false;
    for (const QWidget* each : drawing.findChildren<QWidget*>()) {
        const auto* view = dynamic_cast<const ViewBase*>(each);
        if (!view || !view->bound()) continue;
        const auto* lamp = dynamic_cast<const Led*>(view->shown());
        anyLamp = anyLamp || lamp;
        if (lamp && lamp->Active && !lamp->unread()) lit += nameOnPage(*view);
        if (!lamp && !view->spokenValue().isEmpty()) gauges += nameOnPage(*view) + u' ' + view->spokenValue();
    }
    QStringList parts;
    if (!lit.isEmpty())
        parts += accessWord(AccessWord::Lit) + QStringLiteral(": ") + lit.join(QStringLiteral(", "));
    else if (anyLamp)
        parts += accessWord(AccessWord::NothingLit);
    return (parts + gauges).join(QStringLiteral("; "));
}

/// A label that is only read: its tool tip says it in other words.
const Label* captionOf(const ViewBase& view) {
    const auto* const label = dynamic_cast<const Label*>(view.shown());
    const bool isValue = label && label->role == Label::Role::Value && !label->standsForNoValue;
    return label && !isValue && !label->isClickable() ? label : nullptr;
}

}  // namespace

QString nameOnPage(const ViewBase& view) {
    const Control* const control = view.shown();
    if (!control || !control->window()) return {};
    Page* const page = FindLoadedPage(control->window()->name());
    return page && page == control->window() ? toQt(NameOnPage(*page, *control)) : QString();
}

QString nameOf(const ViewBase& view) {
    if (const Label* const caption = captionOf(view)) {
        QStringList texts{toQt(caption->Caption), toQt(caption->ToolTip)};
        texts.removeAll(QString());
        return texts.join(QStringLiteral(", "));
    }
    const QString name = nameOnPage(view);
    return name.isEmpty() ? view.spokenName() : name;
}

QString shownInWords(const ViewBase& view) {
    if (captionOf(view)) return {};
    if (dynamic_cast<const Picture*>(view.shown())) return drawingInWords(view.widget());
    QStringList parts{view.unread() ? QString() : view.spokenValue(), view.spokenDescription()};
    parts.removeAll(QString());
    parts.removeAll(nameOf(view));  // a lamp's tool tip
    parts.removeDuplicates();
    return parts.join(QStringLiteral(", "));
}

QAccessibleInterface* SpokenView::child(int index) const {
    return view_.isOnePiece() ? nullptr : QAccessibleWidget::child(index);
}

QString SpokenView::text(QAccessible::Text kind) const {
    switch (kind) {
        case QAccessible::Name:
            return nameOf(view_);
        case QAccessible::Value:
            return view_.spokenValue();
        case QAccessible::Description:
            return shownInWords(view_);
        default:
            return QAccessibleWidget::text(kind);
    }
}

QAccessible::State SpokenView::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    if (const auto checked = view_.checked()) {
        state.checkable = true;
        state.checked = *checked;
    }
    const bool isMoved = view_.spokenRole() == QAccessible::Slider || view_.spokenRole() == QAccessible::SpinBox;
    state.disabled = state.disabled || (isMoved && !view_.span());
    state.readOnly = !view_.span() && !view_.canPress();
    state.busy = view_.unread() || view_.standing() == Standing::Waiting;
    return state;
}

void* SpokenView::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface && view_.span()) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

BarScale SpokenView::scale() const {
    const auto* const figure = dynamic_cast<const Label*>(view_.shown());
    const auto* const bar = figure ? figure->bar() : dynamic_cast<const ScrollBar*>(view_.shown());
    return bar ? bar->scale : BarScale{};
}

double SpokenView::steps(int count) const { return count / std::pow(DecimalBase, scale().decimals); }

void SpokenView::setCurrentValue(const QVariant& value) {
    const double raw = std::round(value.toDouble() * std::pow(DecimalBase, scale().decimals)) - scale().offset;
    const double within = std::clamp<double>(raw, span().lowest, span().highest);
    if (view_.span() && !std::isnan(within)) view_.moveTo(static_cast<int>(within));
}

QStringList SpokenView::actionNames() const {
    QStringList names;
    if (!widget()->isEnabled()) return names;
    if (view_.canPress()) names << pressAction();
    if (view_.span()) names << increaseAction() << decreaseAction();
    if (widget()->focusPolicy() != Qt::NoFocus) names << setFocusAction();
    return names;
}

void SpokenView::doAction(const QString& action) {
    if (!widget()->isEnabled()) return;
    if (action == pressAction() && view_.canPress()) return view_.press();
    if (action == increaseAction() && view_.span()) return view_.moveTo(span().value + span().step);
    if (action == decreaseAction() && view_.span()) return view_.moveTo(span().value - span().step);
    QAccessibleWidget::doAction(action);
}

}  // namespace kestrel::qt

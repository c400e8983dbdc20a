// Where the focus goes on a page.
#include "qt/window/page_focus.h"

#include <QEvent>
#include <QPointer>
#include <QScrollArea>
#include <algorithm>
#include <vector>

#include "platform/basic_controls.h"
#include "qt/views/spoken_view.h"

namespace kestrel::qt {

namespace {

void focusNow(QWidget& page, QWidget& widget) {
    for (QScrollArea* area : page.findChildren<QScrollArea*>())
        if (area->isAncestorOf(&widget)) area->ensureWidgetVisible(&widget);
    widget.setFocus(Qt::ShortcutFocusReason);
}

bool takesFocus(const QWidget& widget) { return (widget.focusPolicy() & Qt::TabFocus) && !widget.isHidden(); }

/// Waits for a control to be unlocked; gives up when the user goes elsewhere meanwhile. A field is drawn anew when its
/// bar is unlocked.
class FocusWish : public QObject {
  public:
    FocusWish(QWidget& page, QWidget& widget)
        : QObject(&widget), page_(&page), widget_(widget), before_(page.window()->focusWidget()) {
        widget.installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        const bool isNews = event->type() == QEvent::EnabledChange || event->type() == QEvent::Paint;
        if (isNews && widget_.isEnabled() && takesFocus(widget_)) {
            widget_.removeEventFilter(this);
            const QWidget* const now = widget_.window()->focusWidget();
            if (page_ && (!now || now == before_)) focusNow(*page_, widget_);
            deleteLater();
        }
        return QObject::eventFilter(object, event);
    }

  private:
    QPointer<QWidget> page_;
    QWidget& widget_;
    QPointer<QWidget> before_;
};

QWidget* firstToWork(const QWidget& group) {
    for (QWidget* each : group.findChildren<QWidget*>())
        if (takesFocus(*each) && each->isEnabled() && each->isVisible() && dynamic_cast<ViewBase*>(each)) return each;
    return nullptr;
}

}  // namespace

void focusControl(QWidget& page, const Control& control) {
    QWidget* found = nullptr;
    QString name;
    for (QWidget* each : page.findChildren<QWidget*>())
        if (const auto* view = dynamic_cast<ViewBase*>(each); view && view->bound() && view->standsFor(control)) {
            name = nameOnPage(*view);
            found = each;
        }
    if (found && !takesFocus(*found))  // its figure bears the same name
        for (QWidget* each : page.findChildren<QWidget*>())
            if (const auto* view = dynamic_cast<ViewBase*>(each);
                view && takesFocus(*each) && nameOnPage(*view) == name)
                found = each;
    if (!found) return;
    found->isEnabled() && takesFocus(*found) ? focusNow(page, *found) : void(new FocusWish(page, *found));
}

void focusNextGroup(QWidget& page, bool forward) {
    std::vector<QWidget*> starts;
    std::size_t here = 0;
    const QWidget* const focused = page.window()->focusWidget();
    bool isInside = false;
    for (const QWidget* group : page.findChildren<QWidget*>()) {
        const auto* view = dynamic_cast<const ViewBase*>(group);
        if (!view || !dynamic_cast<const Frame*>(view->shown())) continue;
        QWidget* const start = firstToWork(*group);
        if (!start || (!starts.empty() && starts.back() == start)) continue;
        if (focused && group->isAncestorOf(focused)) {
            here = starts.size();
            isInside = true;
        }
        starts.push_back(start);
    }
    if (starts.empty()) return;
    const std::size_t count = starts.size();
    std::size_t next = forward ? here + 1 : here + count - 1;
    if (!isInside) next = forward ? 0 : count - 1;
    focusNow(page, *starts[next % count]);
}

}  // namespace kestrel::qt

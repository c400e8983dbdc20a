// What a screen reader learns of the drawn views.
#include "qt/views/accessible.h"

#include <QAccessibleWidget>
#include <QScrollArea>
#include <QTreeWidget>

#include "qt/views/spoken_text.h"
#include "qt/views/spoken_view.h"

namespace kestrel::qt {

namespace {

/// A table has rows and cells, for which the toolkit has an interface.
bool isOfToolkit(const QObject& object) { return qobject_cast<const QTreeWidget*>(&object); }

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

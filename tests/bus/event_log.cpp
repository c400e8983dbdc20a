// What the program announces of one object on the accessibility bus.
#include "event_log.h"

namespace kestrel::testing {

EventLog::EventLog(const Node& node) : node_(node) {
    node_.bus.connect(node.service, node.path, QStringLiteral("org.a11y.atspi.Event.Object"),
                      QStringLiteral("PropertyChange"), this, SLOT(propertyChanged(QDBusMessage)));
    const Node registry{node.bus, QStringLiteral("org.a11y.atspi.Registry"),
                        QStringLiteral("/org/a11y/atspi/registry")};
    for (const char* property : {"accessible-description", "accessible-value"})
        registry.call("Registry", "RegisterEvent",
                      {QStringLiteral("object:property-change:") + QString::fromLatin1(property)});
}

void EventLog::propertyChanged(const QDBusMessage& event) {
    const QString property = event.arguments().value(0).toString();
    if (property == QStringLiteral("accessible-description")) descriptions_ += node_.description();
    if (property == QStringLiteral("accessible-value")) ++values_;
}

}  // namespace kestrel::testing

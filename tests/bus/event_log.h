// What the program announces of one object on the accessibility bus of its own accord. An announcement says that
// something is another one; what it is now, the client asks then.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>

#include "accessible_node.h"

namespace kestrel::testing {

class EventLog : public QObject {
    Q_OBJECT

  public:
    explicit EventLog(const Node& node);

    /// What the object's description was at each announcement.
    const QStringList& descriptions() const { return descriptions_; }
    /// How often it has announced another value.
    int values() const { return values_; }

  private Q_SLOTS:
    void propertyChanged(const QDBusMessage& event);

  private:
    Node node_;
    QStringList descriptions_;
    int values_ = 0;
};

}  // namespace kestrel::testing

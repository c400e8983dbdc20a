// An object on the accessibility bus, as a client that sees nothing else of the program knows it.
// Every question goes over the bus; an object that is gone answers with nothing.
#pragma once

#include <QDBusConnection>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <optional>
#include <vector>

namespace kestrel::testing {

struct Node {
    QDBusConnection bus;
    QString service;
    QString path;

    /// Bits of a state, by their numbers on the bus.
    enum State { Busy = 3, Enabled = 8, Focused = 12, Showing = 25 };

    QString name() const { return property("Accessible", "Name").toString(); }
    QString description() const { return property("Accessible", "Description").toString(); }
    QString role() const;
    bool is(State state) const;
    /// It says that it can be asked by the methods of this interface.
    bool has(const char* interface) const;
    double value() const { return property("Value", "CurrentValue").toDouble(); }
    double highest() const { return property("Value", "MaximumValue").toDouble(); }
    void setValue(double value) const;
    QStringList actions() const;
    /// The action of this name; false where there is none.
    bool act(const QString& action) const;

    std::vector<Node> children() const;
    std::optional<Node> child(int index) const;
    /// This one and all below it, those above first.
    std::vector<Node> all() const;
    std::optional<Node> find(const QString& role, const QString& name) const;

    QVariant property(const char* interface, const char* property) const;
    /// Arguments of the answer; none where there is no such object or method.
    QVariantList call(const char* interface, const char* method, const QVariantList& arguments = {}) const;
};

}  // namespace kestrel::testing

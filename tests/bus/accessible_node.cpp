// An object on the accessibility bus.
#include "accessible_node.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace kestrel::testing {

namespace {

constexpr int LongestAnswerMs = 20'000;

QString interfaceName(const char* name) { return QStringLiteral("org.a11y.atspi.") + QString::fromLatin1(name); }

Node reference(const Node& from, const QDBusArgument& argument) {
    QString service;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> service >> path;
    argument.endStructure();
    return {from.bus, service, path.path()};
}

QVariantList send(const Node& node, const QString& interface, const QString& method, const QVariantList& arguments) {
    QDBusMessage question = QDBusMessage::createMethodCall(node.service, node.path, interface, method);
    question.setArguments(arguments);
    const QDBusMessage answer = node.bus.call(question, QDBus::Block, LongestAnswerMs);
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments() : QVariantList();
}

}  // namespace

QVariantList Node::call(const char* interface, const char* method, const QVariantList& arguments) const {
    return send(*this, interfaceName(interface), QString::fromLatin1(method), arguments);
}

QVariant Node::property(const char* interface, const char* property) const {
    const QVariantList answer = send(*this, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                                     {interfaceName(interface), QString::fromLatin1(property)});
    return answer.isEmpty() ? QVariant() : answer.constFirst().value<QDBusVariant>().variant();
}

QString Node::role() const { return call("Accessible", "GetRoleName").value(0).toString(); }

bool Node::is(State state) const {
    const QVariantList answer = call("Accessible", "GetState");
    if (answer.isEmpty()) return false;
    const auto words = qdbus_cast<QList<uint>>(answer.constFirst());
    const int word = state / 32;
    return word < words.size() && (words[word] >> (state % 32) & 1U) != 0;
}

bool Node::has(const char* interface) const {
    return call("Accessible", "GetInterfaces").value(0).toStringList().contains(interfaceName(interface));
}

void Node::setValue(double value) const {
    send(*this, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"),
         {interfaceName("Value"), QStringLiteral("CurrentValue"), QVariant::fromValue(QDBusVariant(value))});
}

QStringList Node::actions() const {
    QStringList names;
    const int count = property("Action", "NActions").toInt();
    for (int i = 0; i < count; ++i) names += call("Action", "GetName", {i}).value(0).toString();
    return names;
}

bool Node::act(const QString& action) const {
    const auto index = actions().indexOf(action);
    return index >= 0 && !call("Action", "DoAction", {static_cast<int>(index)}).isEmpty();
}

std::vector<Node> Node::children() const {
    std::vector<Node> found;
    const QVariantList answer = call("Accessible", "GetChildren");
    if (answer.isEmpty()) return found;
    const auto list = answer.constFirst().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) found.push_back(reference(*this, list));
    list.endArray();
    return found;
}

std::optional<Node> Node::child(int index) const {
    const QVariantList answer = call("Accessible", "GetChildAtIndex", {index});
    if (answer.isEmpty()) return std::nullopt;
    return reference(*this, answer.constFirst().value<QDBusArgument>());
}

std::vector<Node> Node::all() const {
    std::vector<Node> found{*this};
    for (std::size_t i = 0; i < found.size(); ++i)
        for (const Node& child : Node(found[i]).children()) found.push_back(child);
    return found;
}

std::optional<Node> Node::find(const QString& role, const QString& name) const {
    for (const Node& each : all())
        if (each.role() == role && each.name() == name) return each;
    return std::nullopt;
}

}  // namespace kestrel::testing

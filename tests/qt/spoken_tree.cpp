// The tree that a screen reader gets of a window.
// See spoken_tree.h.
#include "spoken_tree.h"

#include <gtest/gtest.h>

#include <set>

namespace kestrel::qt::testing {

namespace {

bool isOperatedOrRead(const QAccessibleInterface& each) {
    static const std::set<QAccessible::Role> Displays = {QAccessible::Indicator, QAccessible::Clock,
                                                         QAccessible::Chart};
    static const std::set<QAccessible::Role> Surroundings = {QAccessible::Client, QAccessible::Cell,
                                                             QAccessible::TreeItem, QAccessible::Window};
    const auto role = each.role();
    return Displays.contains(role) || (each.state().focusable && !Surroundings.contains(role));
}

bool holdsValue(const QAccessibleInterface& each) {
    static const std::set<QAccessible::Role> Valueless = {QAccessible::Button, QAccessible::Tree,
                                                          QAccessible::MenuItem};
    return !Valueless.contains(each.role()) && !each.state().checkable;
}

}  // namespace

int expectNamesAndValues(QAccessibleInterface& tree) {
    int found = 0;
    if (isOperatedOrRead(tree) && !tree.state().invisible) {
        ++found;
        const QAccessibleInterface* parent = tree.parent();
        const std::string about = "role " + std::to_string(tree.role()) + " \"" +
                                  tree.text(QAccessible::Name).toStdString() + "\" in \"" +
                                  (parent ? parent->text(QAccessible::Name).toStdString() : "") + "\"";
        EXPECT_FALSE(tree.text(QAccessible::Name).isEmpty()) << about;
        EXPECT_FALSE(holdsValue(tree) && tree.text(QAccessible::Value).isEmpty()) << about;
    }
    for (int i = 0; i < tree.childCount(); ++i)
        if (QAccessibleInterface* child = tree.child(i)) found += expectNamesAndValues(*child);
    return found;
}

}  // namespace kestrel::qt::testing

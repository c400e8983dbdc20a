// The tree that a screen reader gets of a window, looked through for what it could not tell its user.
#pragma once

#include <QAccessible>

namespace kestrel::qt::testing {

/// Expects a name of everything in the tree that can be operated or shows something, and a value where it holds one.
/// How many of such there are.
int expectNamesAndValues(QAccessibleInterface& tree);

}  // namespace kestrel::qt::testing

// Moments in the life of the running program, for tests that act at the right one.
// They are looked for from the event loop, wherever it runs, so that an act may fall into a nested one.
#pragma once

#include <QObject>
#include <functional>

namespace kestrel::testing {

bool isIdentifying();
bool isRunning();
bool isBoxOpen();

/// Acts once, when it is time, unless the context goes first.
void when(QObject& context, const std::function<bool()>& isTime, const std::function<void()>& act);

/// Presses Enter in the message box that is open.
void confirmBox();

}  // namespace kestrel::testing

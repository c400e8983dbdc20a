// Moments in the life of the running program, for tests that act at the right one.
// They are looked for from the event loop, wherever it runs, so that an act may fall into a nested one.
#pragma once

#include <QMessageBox>
#include <QObject>
#include <functional>

namespace kestrel::testing {

bool isIdentifying();
bool isRunning();
bool isBoxOpen();
/// A request is out, and its reply has not come.
bool isWaiting();
bool isWriting();
bool isErrorLit();

/// Acts once, when it is time, unless the context goes first.
void when(QObject& context, const std::function<bool()>& isTime, const std::function<void()>& act);

/// Presses Enter in the message box that is open.
void confirmBox();
/// Clicks a button of it. Returns its text.
QString clickInBox(QMessageBox::StandardButton button);

}  // namespace kestrel::testing

// Message boxes, one at a time.
// A box asked for while another is open waits until that one has been answered.
#pragma once

#include <QMessageBox>
#include <QPointer>
#include <functional>

#include "platform/platform.h"

namespace kestrel::qt {

class MessageBoxes {
  public:
    /// Shows the message over `parent`, which may be null, and waits for its answer; events go on meanwhile. Where the
    /// demo can be opened, a box about the line has a button for it.
    Message::Answer ask(const Message& message, QWidget* parent, const std::function<void()>& openDemo = {});

  private:
    void waitForOpenBox();

    QPointer<QMessageBox> open_;
};

/// Prints the message on standard error; the answer is the one that changes nothing.
Message::Answer printMessage(const Message& message);

}  // namespace kestrel::qt

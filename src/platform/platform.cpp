// The process-wide instance of the platform.
#include "platform/platform.h"

#include <cstdlib>

#include "platform/errors.h"
#include "platform/outside.h"

namespace kestrel {

namespace {
Platform* present = nullptr;
int openMessages = 0;
}  // namespace

Platform& platform() {
    if (!present) throw ProgrammingError("No platform has been set");
    return *present;
}

Message::Answer ShowMessage(const Message& message) {
    const struct Open {
        Open() { ++openMessages; }
        ~Open() {
            if (--openMessages == 0) MessageClosed();
        }
    } open;
    return platform().showMessage(message);
}

bool MessageIsOpen() { return openMessages > 0; }

void EndProcess(int status) {
    platform().endProcess(status);
    std::abort();
}

void setPlatform(Platform* instance) { present = instance; }

}  // namespace kestrel

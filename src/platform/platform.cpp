// The process-wide instance of the platform.
#include "platform/platform.h"

#include <cstdlib>

#include "platform/errors.h"
#include "platform/module_state.h"
#include "platform/movable.h"
#include "platform/outside.h"

namespace kestrel {

struct OpenBoxes {
    int count = 0;
};
template class Module<OpenBoxes>;

namespace {
Platform* present = nullptr;
}  // namespace

Platform& platform() {
    if (!present) throw ProgrammingError("No platform has been set");
    return *present;
}

Message::Answer ShowMessage(const Message& message) {
    DropHeldGestures();
    const struct Open {
        OpenBoxes& boxes = stateOf<OpenBoxes>();
        Open() { ++boxes.count; }
        ~Open() {
            if (--boxes.count == 0) MessageClosed();
        }
    } open;
    return platform().showMessage(message);
}

bool MessageIsOpen() { return stateOf<OpenBoxes>().count > 0; }

void EndProcess(int status) {
    platform().endProcess(status);
    std::abort();
}

void setPlatform(Platform* instance) { present = instance; }

}  // namespace kestrel

// The process-wide instance of the platform.
#include "platform/platform.h"

#include <cstdlib>
#include <ctime>

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

LocalTime Platform::localTime() const {
    const std::time_t now = std::time(nullptr);
    const std::tm parts = *std::localtime(&now);  // there is one thread
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min};
}

std::string TimeOfDayText(const LocalTime& time) {
    const auto twoFigures = [](int number) { return std::string(number < 10 ? "0" : "") + std::to_string(number); };
    return twoFigures(time.hour) + ":" + twoFigures(time.minute);
}

void setPlatform(Platform* instance) { present = instance; }

}  // namespace kestrel

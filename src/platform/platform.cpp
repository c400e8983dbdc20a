// The process-wide instance of the platform.
// See platform.h.
#include "platform/platform.h"

#include <cstdlib>

#include "platform/trouble.h"

namespace kestrel {

namespace {
Platform* present = nullptr;
}

Platform& platform() {
    if (!present) throw ProgrammingError("No platform has been set");
    return *present;
}

void EndProcess(int status) {
    platform().endProcess(status);
    std::abort();
}

void setPlatform(Platform* instance) { present = instance; }

}  // namespace kestrel

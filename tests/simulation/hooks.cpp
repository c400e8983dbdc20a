// Listens to the calls between the pages and the link: the linker puts these functions in front of the program's own.
// So the program itself has no hook.
#include "simulation/checks.h"

// What the linker calls them: the program's own functions, and those here that every call of them reaches.
#define KESTREL_WRAPPED(result, name, mangled, ...)            \
    result real##name(__VA_ARGS__) __asm__("__real_" mangled); \
    result wrap##name(__VA_ARGS__) __asm__("__wrap_" mangled)

namespace kestrel::testing {

KESTREL_WRAPPED(void, OpenPort, "_ZN7kestrel8OpenPortEi", int port);
KESTREL_WRAPPED(void, ParamWatch, "_ZN7kestrel10ParamWatchEi", int index);
KESTREL_WRAPPED(void, ParamRelease, "_ZN7kestrel12ParamReleaseEi", int index);
KESTREL_WRAPPED(void, ParamWrite, "_ZN7kestrel10ParamWriteEij", int index, std::uint32_t value);
KESTREL_WRAPPED(void, SendFrame, "_ZN7kestrel13LinkSendFrameEv", void);
KESTREL_WRAPPED(void, Notify, "_ZN7kestrel4Page6notifyEil", Page* page, int index, ParamValue value);

void wrapOpenPort(int port) {
    if (Checks::present()) Checks::present()->searching();
    realOpenPort(port);
    if (Checks::present()) Checks::present()->searched();
}

void wrapParamWatch(int index) {
    realParamWatch(index);
    if (Checks::present()) Checks::present()->watched(index);
}

void wrapParamRelease(int index) {
    realParamRelease(index);
    if (Checks::present()) Checks::present()->released(index);
}

void wrapParamWrite(int index, std::uint32_t value) {
    realParamWrite(index, value);
    if (Checks::present()) Checks::present()->written(index, value);
}

/// Reached by identification alone: the engine's own calls stay inside it.
void wrapSendFrame() {
    if (Checks::present()) Checks::present()->beforeQuestion();
    realSendFrame();
}

void wrapNotify(Page* page, int index, ParamValue value) {
    if (Checks::present()) Checks::present()->telling(*page, index, value);
    realNotify(page, index, value);
    if (Checks::present()) Checks::present()->told();
}

}  // namespace kestrel::testing

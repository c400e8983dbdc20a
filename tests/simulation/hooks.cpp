// Listens to the calls between the pages and the link: the linker puts these functions in front of the program's own.
// So the program itself has no hook.
#include <memory>

#include "simulation/checks.h"

/// Names of the linker: the program's own function, and the one here that every call of it from elsewhere reaches.
#define KESTREL_AROUND(name, mangled, parameters, arguments, before, after) \
    void real##name parameters __asm__("__real_" mangled);                  \
    void wrap##name parameters __asm__("__wrap_" mangled);                  \
    void wrap##name parameters {                                            \
        if (Checks* checks = Checks::present()) checks->before;             \
        real##name arguments;                                               \
        if (Checks* checks = Checks::present()) checks->after;              \
    }

#define KESTREL_LOAD "_ZN7kestrel8LoadPageESt10unique_ptrINS_4PageESt14default_deleteIS1_EE"

namespace kestrel::testing {

KESTREL_AROUND(OpenPort, "_ZN7kestrel8OpenPortEi", (int port), (port), searching(), searched())
Page& realLoad(std::unique_ptr<Page> page) __asm__("__real_" KESTREL_LOAD);
Page& wrapLoad(std::unique_ptr<Page> page) __asm__("__wrap_" KESTREL_LOAD);
Page& wrapLoad(std::unique_ptr<Page> page) {
    if (Checks* checks = Checks::present()) checks->ledger.opens(*page);
    return realLoad(std::move(page));
}
KESTREL_AROUND(StartAnew, "_ZN7kestrel9StartAnewEv", (), (), here(), started())
KESTREL_AROUND(LoadIndexFiles, "_ZN7kestrel14LoadIndexFilesEv", (), (), startsAnew(), here())
KESTREL_AROUND(CloseExchange, "_ZN7kestrel13CloseExchangeEv", (), (), closed(), here())
KESTREL_AROUND(Watch, "_ZN7kestrel10ParamWatchEi", (int index), (index), here(), watched(index))
KESTREL_AROUND(Release, "_ZN7kestrel12ParamReleaseEi", (int index), (index), here(), released(index))
KESTREL_AROUND(Write, "_ZN7kestrel10ParamWriteEij", (int index, std::uint32_t value), (index, value), here(),
               written(index, value))
KESTREL_AROUND(Withdraw, "_ZN7kestrel13ParamWithdrawEi", (int index), (index), withdrawn(index), here())
// Reached by identification alone: the engine's own calls stay inside it.
KESTREL_AROUND(SendFrame, "_ZN7kestrel13LinkSendFrameEv", (), (), beforeQuestion(), here())
KESTREL_AROUND(Notify, "_ZN7kestrel4Page6notifyEil", (Page * page, int index, ParamValue value), (page, index, value),
               telling(*page, index, value), told())

}  // namespace kestrel::testing

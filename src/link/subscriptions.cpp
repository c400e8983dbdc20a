// Lists of parameters that a page subscribes to and gives back.
#include "link/subscriptions.h"

#include "link/param_table.h"

namespace kestrel {

namespace {

template <class Operation>
void forEach(std::span<const ParamRun> runs, Operation operation) {
    for (const ParamRun& run : runs) {
        CurrentBank = run.bank;
        for (int n = run.first; n <= run.last; ++n) operation(n);
    }
}

}  // namespace

void WatchAll(std::span<const ParamRun> runs) { forEach(runs, ParamWatch); }

void ReleaseAll(std::span<const ParamRun> runs) { forEach(runs, ParamRelease); }

void WriteTwice(int bank, int parameter, int shadow, unsigned value) {
    CurrentBank = bank;
    ParamWrite(parameter, value);
    CurrentBank = bank;
    ParamWrite(shadow, value);
}

}  // namespace kestrel

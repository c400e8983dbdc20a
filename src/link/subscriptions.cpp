// Lists of parameters that a page subscribes to and gives back.
#include "link/subscriptions.h"

namespace kestrel {

namespace {

template <class Operation>
void forEach(const ParamRun& run, Operation operation) {
    CurrentBank = BankOf(run.board);
    for (int n = run.first; n <= run.last; ++n) operation(n);
}

}  // namespace

void Watch(const ParamRun& run) { forEach(run, ParamWatch); }

void Release(const ParamRun& run) { forEach(run, ParamRelease); }

void WatchAll(std::span<const ParamRun> runs) {
    for (const ParamRun& run : runs) Watch(run);
}

void ReleaseAll(std::span<const ParamRun> runs) {
    for (const ParamRun& run : runs) Release(run);
}

// TEMP
void WriteTwice(int bank, int parameter, int shadow, unsigned value) {
    WriteTwice(Setting{static_cast<Board>(bank), parameter, shadow}, value);
}

}  // namespace kestrel

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

KeepSubscriptions::KeepSubscriptions() {
    for (int bank = 0; bank < Banks; ++bank)
        for (int index = 0; index < RecordCount(bank); ++index)
            watchers_[static_cast<std::size_t>(bank)].push_back(ParamTable(bank, index).Watchers);
}

KeepSubscriptions::~KeepSubscriptions() {
    const int before = CurrentBank;
    for (CurrentBank = 0; CurrentBank < Banks; ++CurrentBank) {
        const auto& watchers = watchers_[static_cast<std::size_t>(CurrentBank)];
        for (std::size_t i = 1; i < watchers.size(); ++i)
            while (ParamTable(CurrentBank, static_cast<int>(i)).Watchers > watchers[i] && BoardPresent(CurrentBank))
                ParamRelease(static_cast<int>(i));
    }
    CurrentBank = before;
}

void WatchAll(std::span<const ParamRun> runs) {
    for (const ParamRun& run : runs) Watch(run);
}

void ReleaseAll(std::span<const ParamRun> runs) {
    for (const ParamRun& run : runs) Release(run);
}

}  // namespace kestrel

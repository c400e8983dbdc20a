// Carrying out a plan.
#include "ctl/writing.h"

#include "link/settings.h"

namespace kestrel::ctl {

namespace {

constexpr int RoundsAllowed = 4;
constexpr std::size_t AtOnce = 32;  ///< writes of parameters without copies

constexpr Place MachineNumber = PlaceOf(master::MachineNumber);

/// The next steps that go out together: those of one parameter, which must not be torn apart, or some without copies.
std::vector<Step*> nextBatch(std::vector<Step*>& due) {
    std::size_t count = 1;
    const auto belongs = [&](const Step& step) {
        const Step& first = *due.front();
        const bool isSame = step.item.row == first.item.row && step.item.index == first.item.index;
        return isSame || (!step.item.hasCopy() && !first.item.hasCopy() && count < AtOnce &&
                          step.item.board() == first.item.board());
    };
    while (count < due.size() && belongs(*due[count])) ++count;
    std::vector<Step*> batch(due.begin(), due.begin() + static_cast<std::ptrdiff_t>(count));
    due.erase(due.begin(), due.begin() + static_cast<std::ptrdiff_t>(count));
    return batch;
}

Ending writeOnce(LineWork& work, std::vector<Step*> due) {
    while (!due.empty()) {
        std::vector<std::pair<Place, std::uint32_t>> values;
        const std::vector<Step*> batch = nextBatch(due);
        if (work.isSilent(batch.front()->item.board())) continue;
        for (Step* step : batch) {
            values.emplace_back(step->place(), step->wanted);
            step->isTouched = true;
            step->now.reset();
        }
        Values confirmed;
        const Ending how = work.write(values, confirmed);
        for (Step* step : batch)
            if (const auto found = confirmed.find(step->place()); found != confirmed.end()) step->now = found->second;
        if (how != Ending::Whole) return how;
    }
    return Ending::Whole;
}

Ending readBack(LineWork& work, std::vector<Step>& steps, std::uint32_t machine) {
    std::vector<Place> places{MachineNumber};
    for (const Step& each : steps)
        if (each.isTouched) places.push_back(each.place());
    Values values;
    const Ending how = work.read(places, values);
    const auto number = values.find(MachineNumber);
    if (work.wasInterrupted() && number != values.end() && number->second != machine) return Ending::OtherBoards;
    for (Step& each : steps)
        if (const auto found = values.find(each.place()); each.isTouched && found != values.end())
            each.now = found->second;
    return how;
}

}  // namespace

Ending carryOut(Context& context, LineWork& work, std::vector<Step>& steps, std::uint32_t machine) {
    Ending how = Ending::Whole;
    for (int round = 0; round < RoundsAllowed && how == Ending::Whole; ++round) {
        std::vector<Step*> due;
        for (Step& each : steps)
            if (!each.isDone()) due.push_back(&each);
        if (due.empty()) break;
        how = writeOnce(work, due);
        work.endsHeard = context.endsWanted();
        const Ending read = readBack(work, steps, machine);
        if (how == Ending::Whole || read == Ending::OtherBoards) how = read;
        if (how == Ending::Whole && work.wasInterrupted()) how = Ending::Interrupted;
    }
    return how;
}

}  // namespace kestrel::ctl

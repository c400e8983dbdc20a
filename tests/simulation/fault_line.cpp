// The line to the simulated machine of a run.
// See fault_line.h.
#include "simulation/fault_line.h"

#include <algorithm>

namespace kestrel::testing {

namespace {

using simulator::second;

/// How long a late reply of a busy board may stay away, and spoiled bytes lie about.
constexpr Micros LateSpan = 13 * second;
constexpr Micros SpoiledSpan = 3 * second;

simulator::MachineOptions optionsOf(const Plan& plan) {
    simulator::MachineOptions options;
    options.directory = KESTREL_INSTALLATION;
    options.hotDrinkBoard = plan.hot != 0;
    options.sectorBoard = plan.sector != 0;
    options.moving = plan.moving != 0;
    options.seed = plan.seed;
    return options;
}

}  // namespace

FaultLine::FaultLine(const Plan& plan) : MachineLine(optionsOf(plan)), plan_(plan) {
    for (const auto& [name, rate] : plan.faults) faults_.setRate(simulator::kindNamed(name), rate);
    machine.onExchange = [this](const simulator::Exchange& exchange) { heard(exchange); };
}

void FaultLine::strike(bool on) {
    striking_ = on;
    calm_ = frames_;
    if (!on) machine.setFaults({});
}

void FaultLine::begin(Micros now, const std::string& incident) {
    now_ = now;
    machine.advance(now);
    mark(incident);
    machine.strike(simulator::kindNamed(incident));
}

void FaultLine::standStill(Micros now, Micros length) {
    for (Micros* until : {&lateUntil_, &spoiledUntil_})
        if (*until >= now) *until += length;
}

bool FaultLine::isAimedAt(const Bytes& frame) const {
    const bool routed = frame[0] > 240;
    const bool writes = ((routed ? frame[4] : frame[0]) & 128) != 0;
    return plan_.aim == Plan::All || (plan_.aim == Plan::Reads && !writes) || (plan_.aim == Plan::Writes && writes) ||
           (plan_.aim == Plan::Slaves && routed);
}

void FaultLine::send(Micros now, const Bytes& frame) {
    now_ = now;
    ++frames_;
    if (onSend) onSend(frame);
    if (striking_) {
        simulator::FaultPlan faults = isAimedAt(frame) ? faults_ : simulator::FaultPlan{};
        if (frames_ - calm_ == plan_.frame) faults.setRate(simulator::kindNamed(plan_.single), 1);
        machine.setFaults(faults);
    }
    MachineLine::send(now, frame);
}

Bytes FaultLine::take(Micros now) {
    now_ = now;
    return MachineLine::take(now);
}

/// A board has made up its mind about a frame.
void FaultLine::heard(const simulator::Exchange& exchange) {
    now_ = std::max(now_, exchange.time);
    mark(exchange.note);
    if (exchange.request.verdict != simulator::Frame::Verdict::Good) return;
    said_ = {frames_, static_cast<int>(exchange.request.board), exchange.request.address, exchange.request.write,
             exchange.value};
}

/// Notes what a fault may bring: a reply for another request, or bytes that are no board's.
void FaultLine::mark(std::string_view struck) {
    const auto any = [struck](std::initializer_list<const char*> names) {
        return std::any_of(names.begin(), names.end(),
                           [struck](const char* name) { return struck.find(name) != std::string_view::npos; });
    };
    if (any({"slow", "late", "busy"})) lateUntil_ = now_ + LateSpan;
    if (any({"drop", "extra", "flip", "ack", "echo", "noise", "request", "part", "blind", "collide", "stream"}))
        spoiledUntil_ = now_ + SpoiledSpan;
}

}  // namespace kestrel::testing

// The line to the simulated machine of a run.
#include "simulation/fault_line.h"

#include <algorithm>

#include "link/link_engine.h"

namespace kestrel::testing {

namespace {

using simulator::second;

/// How long a late reply of a busy board may stay away, and spoiled bytes lie about.
constexpr Micros LateSpan = 13 * second;
constexpr Micros SpoiledSpan = 3 * second;
constexpr int OtherRevision = 25;

/// The second machine has other values, and where the plan wants it another master, or not the same boards.
simulator::MachineOptions optionsOf(const Plan& plan, bool isSecond) {
    simulator::MachineOptions options;
    options.directory = KESTREL_INSTALLATION;
    options.hotDrinkBoard = plan.hot != 0;
    options.sectorBoard = plan.sector != 0;
    options.moving = plan.moving != 0;
    options.seed = plan.seed + isSecond;
    if (isSecond && plan.other == Plan::OtherMaster) options.identities[0].revision = OtherRevision;
    if (isSecond && plan.other == Plan::OtherBoards) options.hotDrinkBoard = !options.hotDrinkBoard;
    return options;
}

}  // namespace

FaultLine::FaultLine(const Plan& plan) : plan_(plan) {
    for (const auto& [name, rate] : plan.faults) faults_.setRate(simulator::kindNamed(name), rate);
    for (const bool isSecond : {false, true}) {
        if (isSecond && plan.other == Plan::NoOther) break;
        auto& added = machines_.emplace_back(std::make_unique<MachineLine>(optionsOf(plan, isSecond)))->machine;
        added.onExchange = [this](const simulator::Exchange& exchange) { heard(exchange); };
        if (isSecond) added.strike(simulator::FaultKind::Swap);
    }
}

std::size_t FaultLine::plugged() const {
    const bool secondPort = Link().ComPort == 2;
    return machines_.size() > 1 && secondPort != (changes_ % 2 == 1) ? 1 : 0;
}

void FaultLine::setLatency(Micros latency) {
    for (const auto& line : machines_) line->machine.setLatency(latency);
}

void FaultLine::strike(bool on) {
    striking_ = on;
    calm_ = frames_;
    for (const auto& line : machines_)
        if (!on) line->machine.setFaults({});
}

void FaultLine::begin(Micros now, const std::string& incident) {
    now_ = now;
    mark(incident);
    const bool cables = incident == CablesChanged;
    for (const auto& line : machines_) {
        line->machine.advance(now);
        if (cables) line->machine.strike(simulator::FaultKind::PortLost);
    }
    if (cables)
        ++changes_;
    else
        machine().strike(simulator::kindNamed(incident));
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
        machine().setFaults(faults);
    }
    machines_[plugged()]->send(now, frame);
}

Bytes FaultLine::take(Micros now) {
    now_ = now;
    return machines_[plugged()]->take(now);
}

/// A board has made up its mind about a frame.
void FaultLine::heard(const simulator::Exchange& exchange) {
    now_ = std::max(now_, exchange.time);
    mark(exchange.note);
    if (onHeard) onHeard(exchange);
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
    if (any({"reset", "change", "swap"})) upset_ = now_;
    if (any({"slow", "late", "busy"})) lateUntil_ = now_ + LateSpan;
    if (any({"drop", "extra", "flip", "ack", "echo", "noise", "request", "part", "blind", "collide", "stream"}))
        spoiledUntil_ = now_ + SpoiledSpan;
}

}  // namespace kestrel::testing

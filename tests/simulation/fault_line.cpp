// The line to the simulated machine, with everything that goes wrong on the way.
// See fault_line.h.
#include "simulation/fault_line.h"

#include <algorithm>

#include "simulator/exchange.h"

namespace kestrel::testing {

namespace {

using simulator::Board;
using simulator::Exchange;
using simulator::millisecond;
using simulator::second;

/// How long a late reply may stay away, and how long spoiled bytes may lie about.
constexpr Micros LateSpan = 7 * second;
constexpr Micros SpoiledSpan = 1200 * millisecond;
constexpr Micros StreamStep = 5 * millisecond;
constexpr std::uint8_t WriteBit = 128;

simulator::MachineOptions optionsOf(const Plan& plan) {
    simulator::MachineOptions options;
    options.directory = KESTREL_INSTALLATION;
    options.hotDrinkBoard = plan.hotDrinkBoard;
    options.sectorBoard = plan.sectorBoard;
    options.moving = plan.moving;
    options.seed = plan.seed;
    return options;
}

bool holds(const simulator::Machine& machine, int bank, int index) {
    try {
        if (index == 0 || !machine.fitted(static_cast<Board>(bank))) return false;
        machine.value(static_cast<Board>(bank), index);
        return true;
    } catch (const std::out_of_range&) {
        return false;
    }
}

/// The master's word on the order that it carries out is no memory: a false one would never end.
bool saysWhatItDoes(int bank, int index) { return bank == 0 && index == 7; }

std::uint8_t anyByte(Dice& random) { return static_cast<std::uint8_t>(random.between(0, 255)); }

bool isWrite(const Bytes& frame) {
    const bool routed = frame.size() >= 7 && frame[0] > 240;
    return ((routed ? frame[4] : frame[0]) & WriteBit) != 0;
}

}  // namespace

FaultLine::FaultLine(const Plan& plan) : machine(optionsOf(plan)), plan_(plan) {
    for (std::uint32_t i = 0; i < FaultCount; ++i) chances_.push_back(chanceOf(plan.seed, Chance::Line, i));
    for (std::size_t i = 0; i < simulator::faultKindCount; ++i)
        machineFaults_.setRate(static_cast<simulator::FaultKind>(i), plan.strength[i]);
    machine.onExchange = [this](const Exchange& exchange) { heard(exchange); };
}

void FaultLine::strike(Micros now, bool on) {
    pass(now);
    striking_ = on;
    if (on) calm_ = frames_;
    if (on) return;
    machine.setFaults({});
    for (const Board board : simulator::allBoards) machine.setBoardSilent(board, false);
    busyUntil_ = now_;
    streamUntil_ = std::min(streamUntil_, now_);
    if (!machine.portOpen()) backAt_ = now_;
    changes_.clear();
}

bool FaultLine::strikes(Fault fault) {
    const double rate = plan_.strength[static_cast<std::size_t>(fault)];
    return (aimed_ && rate > 0 && of(fault).chance(rate)) || (strikesOnce() && plan_.single == fault);
}

bool FaultLine::strikesOnce() const { return striking_ && plan_.singleAt > 0 && frames_ - calm_ == plan_.singleAt; }

void FaultLine::begin(Micros now, Fault incident, int number) {
    pass(now);
    auto random = chanceOf(plan_.seed, Chance::Incident, static_cast<std::uint32_t>(number) + 100'000);
    const Micros length = random.between(200, 6000) * millisecond;
    const auto board = static_cast<Board>(random.between(0, 2));
    if (incident == Fault::Busy) {
        busyUntil_ = now_ + length;
        lateUntil_ = std::max(lateUntil_, busyUntil_ + LateSpan);
    } else if (incident == Fault::Stream || incident == Fault::Stray) {
        spoiledIn(0);
        if (incident == Fault::Stray) {
            for (auto count = random.between(1, 12); count > 0; --count) stray_.push_back(anyByte(random));
        } else {
            streamed_ = now_;
            streamUntil_ = now_ + length / 4;
            spoiledIn(length / 4);
        }
    } else if (incident == Fault::Unplug) {
        machine.portLost();
        held_.clear();
        backAt_ = now_ + length;
    } else if (incident == Fault::Restart) {
        machine.boardReset(board);
    } else if (incident == Fault::Hush) {
        for (const Board each : simulator::allBoards) machine.setBoardSilent(each, random.chance(0.5));
    } else if (incident == Fault::Change) {
        const auto [bank, index] = target();
        tampered_ = true;
        if (holds(machine, bank, index) && !saysWhatItDoes(bank, index))
            machine.setValue(static_cast<Board>(bank), index, static_cast<std::uint32_t>(random.between(0, 255)));
    } else if (incident == Fault::Swap) {
        putAll(random);
    }
}

void FaultLine::spoiledIn(Micros wait) { spoiledUntil_ = std::max(spoiledUntil_, now_ + wait + SpoiledSpan); }

void FaultLine::standStill(Micros now, Micros length) {
    for (Micros* until : {&lateUntil_, &spoiledUntil_})
        if (*until >= now) *until += length;
}

/// Another machine's memory: any values, as far as the boards' files reach.
void FaultLine::putAll(Dice& random) {
    tampered_ = true;
    for (const Board board : simulator::allBoards) {
        // The master's first words say which boards are there, and that does not change.
        for (int index = board == Board::Master ? 3 : 1; holds(machine, static_cast<int>(board), index); ++index) {
            const auto value = static_cast<std::uint32_t>(random.between(0, 0xFFFFFFFF));
            if (!saysWhatItDoes(static_cast<int>(board), index)) machine.setValue(board, index, value);
        }
    }
}

void FaultLine::send(Micros now, const Bytes& frame) {
    pass(now);
    ++frames_;
    if (onSend) onSend(frame);
    aimed_ = striking_ &&
             (plan_.aim == Plan::Aim::All || (plan_.aim == Plan::Aim::Reads && !isWrite(frame)) ||
              (plan_.aim == Plan::Aim::Writes && isWrite(frame)) || (plan_.aim == Plan::Aim::Slaves && frame[0] > 240));
    simulator::FaultPlan faults = aimed_ ? machineFaults_ : simulator::FaultPlan{};
    if (strikesOnce() && plan_.single < Fault::Request)
        faults.setRate(static_cast<simulator::FaultKind>(plan_.single), 1);
    if (striking_) machine.setFaults(faults);
    changes_.clear();
    written_ = target ? target() : std::pair{0, 0};
    const auto board = static_cast<Board>(written_.first);
    const bool known = isWrite(frame) && holds(machine, written_.first, written_.second);
    if (known) before_ = machine.value(board, written_.second);
    if (!known) written_.second = 0;
    Bytes onTheWay = frame;
    if (strikes(Fault::Request)) {
        auto& byte = onTheWay[static_cast<std::size_t>(of(Fault::Request).between(0, 4))];
        byte = static_cast<std::uint8_t>(byte ^ (1U << of(Fault::Request).between(0, 7)));
        spoiledIn(0);
    }
    if (strikes(Fault::Part)) onTheWay.resize(static_cast<std::size_t>(of(Fault::Part).between(0, 4)));
    machine.send(now, onTheWay);
}

/// A board has made up its mind about a frame.
void FaultLine::heard(const Exchange& exchange) {
    if (exchange.note.find("slow") != std::string::npos || exchange.note.find("late") != std::string::npos)
        lateUntil_ = std::max(lateUntil_, exchange.time + LateSpan);
    for (const char* what : {"drop", "extra", "flip", "ack", "echo", "noise"})
        if (exchange.note.find(what) != std::string::npos) spoiledIn(LateSpan);
    if (exchange.request.verdict != simulator::Frame::Verdict::Good) return;
    said_ = {frames_, static_cast<int>(exchange.request.board), exchange.request.address, exchange.request.write,
             exchange.value};
    if (exchange.reply.empty()) return;
    if (exchange.request.write)
        lie(exchange);
    else
        changeReply(exchange);
}

/// Acknowledged, and yet the board holds something else.
void FaultLine::lie(const Exchange& exchange) {
    const bool forgets = strikes(Fault::NoEffect);
    const bool clamps = strikes(Fault::Clamp);
    const auto board = static_cast<Board>(written_.first);
    if (exchange.request.board != board || exchange.parameter != written_.second || written_.second == 0) return;
    if (forgets) machine.setValue(board, written_.second, before_);
    if (clamps) machine.setValue(board, written_.second, exchange.value / 2);
    tampered_ = tampered_ || forgets || clamps;
}

void FaultLine::changeReply(const Exchange& exchange) {
    if (strikes(Fault::Blind)) {
        changes_.assign(exchange.reply.size(), 0);
        if (exchange.reply.size() > 2) {
            changes_[0] = changes_[1] = exchange.reply[0] ^ exchange.reply[1];
        } else {
            const auto bit = static_cast<std::uint8_t>(1U << of(Fault::Blind).between(0, 7));
            std::fill(changes_.begin(), changes_.end(), bit);
        }
        spoiledIn(LateSpan);
    }
    if (strikes(Fault::Collide)) {
        changes_.clear();
        for (std::size_t i = 0; i < exchange.reply.size(); ++i) changes_.push_back(anyByte(of(Fault::Collide)));
        spoiledIn(LateSpan);
    }
}

std::optional<Micros> FaultLine::nextEvent() const { return machine.nextEvent(); }

std::optional<Micros> FaultLine::nextArrival(Micros limit) {
    for (;;) {
        if (backAt_ >= 0 && backAt_ <= limit && !machine.portOpen()) {
            pass(backAt_);
            machine.advance(backAt_);
            machine.portBack();
            backAt_ = -1;
        }
        if (present() != wasPresent_) {
            wasPresent_ = present();
            return now_;
        }
        auto next = machine.nextEvent();
        const bool output = next && next == machine.nextOutput();
        std::optional<Micros> own;
        if (!stray_.empty()) own = now_;
        if (!own && streamed_ < streamUntil_) own = streamed_ + StreamStep;
        if (!own && !held_.empty()) own = busyUntil_;
        if (own && (!next || *own <= *next)) return *own <= limit ? own : std::nullopt;
        if (!next || *next > limit) return std::nullopt;
        if (output && *next >= busyUntil_) return next;
        pass(*next);
        if (output) {
            const Bytes bytes = machine.takeOutput(*next);
            held_.insert(held_.end(), bytes.begin(), bytes.end());
        } else {
            machine.advance(*next);
        }
    }
}

Bytes FaultLine::take(Micros now) {
    pass(now);
    Bytes bytes;
    if (now >= busyUntil_) bytes.swap(held_);
    const Bytes arrived = machine.takeOutput(now);
    Bytes& waiting = now >= busyUntil_ ? bytes : held_;
    waiting.insert(waiting.end(), arrived.begin(), arrived.end());
    for (auto& byte : bytes) {
        if (changes_.empty()) break;
        byte ^= changes_.front();
        changes_.pop_front();
    }
    if (!stray_.empty()) spoiledIn(0);
    bytes.insert(bytes.end(), stray_.begin(), stray_.end());
    stray_.clear();
    addStream(bytes);
    return bytes;
}

void FaultLine::addStream(Bytes& bytes) {
    for (; streamed_ < std::min(now_, streamUntil_); streamed_ += simulator::byteTime)
        bytes.push_back(anyByte(of(Fault::Stream)));
}

}  // namespace kestrel::testing

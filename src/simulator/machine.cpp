// The machine: bytes in, exchanges, bytes out, all in the order of the owner's time.
// A board takes a few milliseconds to reply; whatever can go wrong goes wrong here, as the fault plan says.
#include "simulator/machine.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "simulator/behaviours.h"
#include "simulator/line.h"
#include "simulator/setup.h"
#include "simulator/spoiling.h"

namespace kestrel::simulator {
namespace {

constexpr Micros restartTime = 1'500 * millisecond;

std::uint32_t valueOf(const Bytes& data) {
    std::uint32_t value = 0;
    for (std::size_t i = data.size(); i-- > 0;) value = value << 8 | data[i];
    return value;
}

std::uint8_t sumOf(const Bytes& data) {
    unsigned sum = 0;
    for (const std::uint8_t byte : data) sum += byte;
    return static_cast<std::uint8_t>(sum);
}

std::string_view whyNoReply(Frame::Verdict verdict) {
    switch (verdict) {
        case Frame::Verdict::BadSum:
            return "bad checksum";
        case Frame::Verdict::NoSuchBoard:
            return "no such board address";
        default:
            return "not a frame";
    }
}

}  // namespace

struct Machine::State {
    explicit State(const MachineOptions& options)
        : world(buildWorld(options)),
          behaviours(world),
          faults(options.faults, options.seed),
          replyTimes(options.seed, Stream::Replies) {}

    World world;
    Behaviours behaviours;
    FaultSource faults;
    Random replyTimes;
    Receiver receiver;
    OutgoingLine line;
    Micros inputFreeAt = 0;
    bool unplugged = false;
    Micros portAwayUntil = 0;
    std::uint32_t plugging = 0;  // bytes that were under way when the port was lost belong to an earlier plugging
    std::array<bool, boardCount> silent{};
    std::array<Micros, boardCount> awayUntil{};
    std::array<std::uint64_t, boardCount> life{};  // a restart takes the replies that were not yet sent with it
};

Machine::Machine(const MachineOptions& options) : state_(std::make_unique<State>(options)) {}
Machine::~Machine() = default;

void Machine::send(Micros now, const Bytes& bytes) {
    advance(now);
    if (!portOpen()) return;
    State& s = *state_;
    s.inputFreeAt = std::max(s.inputFreeAt, s.world.agenda.now());
    for (const std::uint8_t byte : bytes) {
        s.inputFreeAt += byteTime;
        s.world.agenda.at(s.inputFreeAt, [this, plugging = s.plugging, byte] {
            if (plugging == state_->plugging) receive(byte);
        });
    }
}

std::optional<Micros> Machine::nextOutput() const { return state_->line.next(); }

Bytes Machine::takeOutput(Micros now) {
    advance(now);
    return state_->line.take(now);
}

void Machine::advance(Micros now) { state_->world.agenda.runUntil(now); }

std::optional<Micros> Machine::nextEvent() const {
    const auto output = nextOutput();
    const auto action = state_->world.agenda.next();
    return output && action ? std::min(output, action) : output ? output : action;
}

std::uint32_t Machine::value(Board board, int parameter) const {
    const BoardMemory& memory = state_->world.at(board);
    if (!memory.has(parameter)) {
        throw std::out_of_range("the " + std::string(nameOf(board)) + " board has no parameter " +
                                std::to_string(parameter));
    }
    return memory.value(parameter);
}

void Machine::setValue(Board board, int parameter, std::uint32_t value) {
    static_cast<void>(this->value(board, parameter));
    state_->world.set(board, parameter, value);
}

bool Machine::fitted(Board board) const { return state_->world.isFitted(board); }

bool Machine::portOpen() const { return !state_->unplugged && state_->world.agenda.now() >= state_->portAwayUntil; }

void Machine::portLost() {
    state_->unplugged = true;
    losePort(0);
}

void Machine::portBack() { state_->unplugged = false; }

void Machine::losePort(Micros away) {
    State& s = *state_;
    ++s.plugging;
    s.inputFreeAt = 0;
    s.line.drop();
    s.portAwayUntil = std::max(s.portAwayUntil, s.world.agenda.now() + away);
    s.world.agenda.at(s.portAwayUntil, [] {});  // so that the owner comes to see that the port is back
}

void Machine::boardReset(Board board) {
    State& s = *state_;
    ++s.life[indexOf(board)];
    s.line.drop();
    s.behaviours.reset(board);
    s.awayUntil[indexOf(board)] = std::max(s.awayUntil[indexOf(board)], s.world.agenda.now() + restartTime);
}

void Machine::setBoardSilent(Board board, bool silent) { state_->silent[indexOf(board)] = silent; }

void Machine::setFaults(const FaultPlan& plan) { state_->faults.setPlan(plan); }

// The master sees that a board behind it is gone, and says so in its presence word until the board is back.
void Machine::loseBoard(Board board, Micros away) {
    State& s = *state_;
    Micros& until = s.awayUntil[indexOf(board)];
    until = std::max(until, s.world.agenda.now() + away);
    if (board == Board::Master) return;
    const int presence = board == Board::HotDrink ? master::hotDrinkPresence : master::sectorPresence;
    s.world.setBit(Board::Master, presence, presentBit, false);
    s.world.agenda.at(until, [this, board, presence] {
        World& world = state_->world;
        const bool back = world.agenda.now() >= state_->awayUntil[indexOf(board)];
        if (back) world.setBit(Board::Master, presence, presentBit, true);
    });
}

void Machine::receive(std::uint8_t byte) {
    State& s = *state_;
    auto frame = s.receiver.take(s.world.agenda.now(), byte);
    if (!frame) return;
    Exchange exchange;
    exchange.time = s.world.agenda.now();
    exchange.request = std::move(*frame);
    serve(std::move(exchange));
}

void Machine::serve(Exchange exchange) {
    const Frame& request = exchange.request;
    if (request.verdict != Frame::Verdict::Good) {
        remark(exchange.note, whyNoReply(request.verdict));
    } else {
        const BoardMemory& memory = state_->world.at(request.board);
        exchange.parameter = memory.parameterAt(request.address);
        exchange.identity = exchange.parameter == 0 ? memory.identityAt(request.address) : 0;
        if (hears(exchange)) answer(exchange);
    }
    report(exchange);
}

// Whether the request reaches a board at all. Everything behind the master needs the master.
bool Machine::hears(Exchange& exchange) {
    State& s = *state_;
    const Board board = exchange.request.board;
    for (const Board needed : {Board::Master, board}) {
        const std::size_t n = indexOf(needed);
        const std::string_view why = !s.world.fitted[n]                      ? "board not fitted"
                                     : s.silent[n]                           ? "board silent"
                                     : s.world.agenda.now() < s.awayUntil[n] ? "board away"
                                                                             : "";
        if (why.empty()) continue;
        remark(exchange.note, why);
        return false;
    }
    const auto strikes = [&](FaultKind kind) {
        if (!s.faults.strikes(kind)) return false;
        remark(exchange.note, nameOf(kind));
        return true;
    };
    const auto drawSeconds = [&](FaultKind kind, int low, int high) {
        return s.faults.of(kind).between(low * second, high * second);
    };
    // Every kind draws for every exchange, whatever the others have done.
    const bool port = strikes(FaultKind::PortLost);
    const bool lost = strikes(FaultKind::BoardLost);
    const bool reset = strikes(FaultKind::Reset);
    const bool silenced = strikes(FaultKind::Silent);
    if (port) losePort(drawSeconds(FaultKind::PortLost, 2, 6));
    if (lost) loseBoard(board, drawSeconds(FaultKind::BoardLost, 3, 10));
    if (reset) boardReset(board);
    if (silenced && s.faults.of(FaultKind::Silent).chance(0.5)) obey(exchange);
    return !(port || lost || reset || silenced);
}

// What the board does with the request, and what it has to say to it. Empty when it does not know the address.
Bytes Machine::obey(Exchange& exchange) {
    State& s = *state_;
    const Frame& request = exchange.request;
    BoardMemory& memory = s.world.at(request.board);
    if (!request.write) {
        const auto data = memory.read(request.address, request.width);
        if (!data) return {};
        exchange.value = valueOf(*data);
        Bytes reply = *data;
        reply.push_back(sumOf(reply));
        return reply;
    }
    exchange.value = valueOf(request.data);
    if (!memory.write(request.address, request.data)) return {};
    if (exchange.parameter != 0) s.behaviours.written(request.board, exchange.parameter);
    return {static_cast<std::uint8_t>(request.sum * 2)};
}

void Machine::answer(Exchange& exchange) {
    State& s = *state_;
    Reply reply;
    reply.bytes = obey(exchange);
    if (reply.bytes.empty()) {
        remark(exchange.note, "unknown address");
        return;
    }
    reply.delay = s.replyTimes.between(2 * millisecond, 6 * millisecond);
    spoil(reply, exchange.request, s.faults, exchange.note);
    exchange.reply = reply.bytes;

    const std::size_t board = indexOf(exchange.request.board);
    s.world.agenda.after(reply.delay, [this, reply, board, life = s.life[board]] {
        State& then = *state_;
        if (!portOpen() || then.life[board] != life) return;
        then.line.transmit(then.world.agenda.now(), reply.bytes);
        if (reply.noise.empty()) return;
        then.world.agenda.at(then.line.freeAt() + reply.noiseGap, [this, noise = reply.noise] {
            if (portOpen()) state_->line.transmit(state_->world.agenda.now(), noise);
        });
    });
}

void Machine::report(const Exchange& exchange) const {
    if (onExchange) onExchange(exchange);
}

}  // namespace kestrel::simulator

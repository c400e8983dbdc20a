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
constexpr std::size_t streamPiece = 10;  // bytes

// Faults that need no exchange to strike.
constexpr std::array incidents{FaultKind::PortLost, FaultKind::BoardLost, FaultKind::Reset, FaultKind::Busy,
                               FaultKind::Stream,   FaultKind::Change,    FaultKind::Swap};

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

// What boards say of themselves: which of them are there, the order that is carried out, a test that runs. Nobody would
// ever take back a false one.
bool isReport(const Setting& parameter) {
    constexpr std::array reports{master::HotDrinkPresence, master::SectorPresence, master::MachineState,
                                 hot_drink::TestState, sector::TestState};
    return std::ranges::count(reports, parameter) != 0;
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
    std::array<std::uint64_t, boardCount> life{};
    Micros busyUntil = 0;
    Micros streamUntil = 0;
    bool streams = false;
    std::string onTheWay;  // what happened to the newest request before a board got it
    Board askedBoard = Board::Master;
    int askedParameter = 0;  // by the newest good request; 0: none

    // A restart takes the replies that were not yet sent with it, the master's those of the boards behind it as well.
    std::uint64_t livesOnTheWay(Board board) const { return life[indexOf(Board::Master)] + life[indexOf(board)]; }
};

Machine::Machine(const MachineOptions& options) : state_(std::make_unique<State>(options)) {
    setLatency(options.latency);
}
Machine::~Machine() = default;

void Machine::send(Micros now, const Bytes& bytes) {
    advance(now);
    if (bytes.empty() || !portOpen()) return;
    State& s = *state_;
    s.inputFreeAt = std::max(s.inputFreeAt, s.world.agenda.now());
    Bytes arriving = bytes;
    s.onTheWay.clear();
    spoilRequest(arriving, s.faults, s.onTheWay);
    for (const std::uint8_t byte : arriving) {
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
    state_->world.set({board, parameter}, value);
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

void Machine::setLatency(Micros latency) { state_->line.setLatency(latency); }

void Machine::strike(FaultKind kind) {
    State& s = *state_;
    if (kind == FaultKind::Noise) {
        if (portOpen()) s.line.transmit(s.world.agenda.now(), someNoise(s.faults.of(kind)));
        return;
    }
    if (std::find(incidents.begin(), incidents.end(), kind) == incidents.end()) {
        throw std::invalid_argument("fault \"" + std::string(nameOf(kind)) + "\" strikes in an exchange only");
    }
    Board board = allBoards[static_cast<std::size_t>(s.faults.of(kind).between(0, boardCount - 1))];
    if (!fitted(board)) board = Board::Master;
    begin(kind, board);
}

// One of the incidents begins, at this board if it is a matter of one. False when a board may go on with its exchange.
bool Machine::begin(FaultKind kind, Board board) {
    State& s = *state_;
    const Micros now = s.world.agenda.now();
    const auto draw = [&](Micros low, Micros high) { return s.faults.of(kind).between(low, high); };
    switch (kind) {
        case FaultKind::PortLost:
            losePort(draw(2 * second, 6 * second));
            return true;
        case FaultKind::BoardLost:
            loseBoard(board, draw(3 * second, 10 * second));
            return true;
        case FaultKind::Reset:
            boardReset(board);
            return true;
        case FaultKind::Busy:
            s.busyUntil = std::max(s.busyUntil, now + draw(second / 5, 6 * second));
            return false;
        case FaultKind::Stream:
            s.streamUntil = std::max(s.streamUntil, now + draw(second / 20, 3 * second / 2));
            if (!s.streams) stream();
            return false;
        case FaultKind::Change:
            if (s.askedParameter != 0 && !isReport({s.askedBoard, s.askedParameter})) {
                s.world.set({s.askedBoard, s.askedParameter}, static_cast<std::uint32_t>(draw(0, 255)));
            }
            return false;
        default:
            swapMemories();
            return false;
    }
}

// Piece by piece, so that replies find their way in between; never ahead of the line.
void Machine::stream() {
    State& s = *state_;
    s.streams = s.world.agenda.now() < s.streamUntil && portOpen();
    if (!s.streams) return;
    Bytes piece;
    while (piece.size() < streamPiece) piece.push_back(s.faults.of(FaultKind::Stream).byte());
    if (s.line.freeAt() <= s.world.agenda.now()) s.line.transmit(s.world.agenda.now(), piece);
    s.world.agenda.after(streamPiece * byteTime, [this] { stream(); });
}

// Any values, as far as the boards' files reach.
void Machine::swapMemories() {
    State& s = *state_;
    for (const Board board : allBoards) {
        for (int parameter = 1; s.world.at(board).has(parameter); ++parameter) {
            const auto value = static_cast<std::uint32_t>(s.faults.of(FaultKind::Swap).between(0, 0xFFFFFFFF));
            if (!isReport({board, parameter})) s.world.set({board, parameter}, value);
        }
    }
}

// The master sees that a board behind it is gone, and says so in its presence word until the board is back.
void Machine::loseBoard(Board board, Micros away) {
    State& s = *state_;
    Micros& until = s.awayUntil[indexOf(board)];
    until = std::max(until, s.world.agenda.now() + away);
    if (board == Board::Master) return;
    const Setting presence = board == Board::HotDrink ? master::HotDrinkPresence : master::SectorPresence;
    s.world.setBit(presence, presentBit, false);
    awaitBoard(board, presence);
}

// It may be reset, or lost once more, while it is away.
void Machine::awaitBoard(Board board, const Setting& presence) {
    const Micros until = state_->awayUntil[indexOf(board)];
    state_->world.agenda.at(until, [this, board, presence] {
        World& world = state_->world;
        if (world.agenda.now() < state_->awayUntil[indexOf(board)]) return awaitBoard(board, presence);
        world.setBit(presence, presentBit, true);
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
    exchange.note = std::exchange(state_->onTheWay, {});
    if (request.verdict != Frame::Verdict::Good) {
        remark(exchange.note, whyNoReply(request.verdict));
    } else {
        const BoardMemory& memory = state_->world.at(request.board);
        exchange.parameter = memory.parameterAt(request.address);
        exchange.identity = exchange.parameter == 0 ? memory.identityAt(request.address) : 0;
        if (hears(exchange)) answer(exchange);
        state_->askedBoard = request.board;
        state_->askedParameter = exchange.parameter;
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
    // Every kind draws for every exchange, whatever the others have done.
    const bool silenced = strikes(FaultKind::Silent, s.faults, exchange.note);
    bool taken = silenced;
    for (const FaultKind kind : incidents)
        taken = (strikes(kind, s.faults, exchange.note) && begin(kind, board)) || taken;
    if (silenced && s.faults.of(FaultKind::Silent).chance(0.5)) obey(exchange);
    return !taken;
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
    const bool forgets = strikes(FaultKind::NoEffect, s.faults, exchange.note);
    Bytes stored = request.data;
    if (strikes(FaultKind::Clamp, s.faults, exchange.note)) {
        for (std::size_t i = 0; i < stored.size(); ++i) {
            stored[i] = static_cast<std::uint8_t>(exchange.value / 2 >> 8 * i);
        }
    }
    if (forgets ? !memory.read(request.address, request.width) : !memory.write(request.address, stored)) return {};
    if (exchange.parameter != 0 && !forgets) s.behaviours.written({request.board, exchange.parameter});
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
    reply.delay = std::max(reply.delay, s.busyUntil - s.world.agenda.now());
    spoil(reply, exchange.request, s.faults, exchange.note);
    exchange.reply = reply.bytes;

    const Board board = exchange.request.board;
    s.world.agenda.after(reply.delay, [this, reply, board, lives = s.livesOnTheWay(board)] {
        State& then = *state_;
        if (!portOpen() || then.livesOnTheWay(board) != lives) return;
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

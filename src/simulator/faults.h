// Faults that the simulated machine can be asked for, each with a rate, and the chance behind them.
// A rate is a probability per exchange, 0 to 1.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/random.h"

namespace kestrel::simulator {

enum class FaultKind {
    Silent,     // no reply: the request was not heard, or the reply was lost after it was obeyed
    Slow,       // the reply comes 100 to 900 ms late
    Late,       // the reply comes 1 to 5 s late
    Drop,       // a byte of the reply is missing
    Extra,      // a byte too many stands in the reply
    Flip,       // one bit of the reply is wrong
    WrongAck,   // a write is obeyed and acknowledged with a wrong byte
    Echo,       // the request comes back before the reply
    Noise,      // some bytes arrive after the exchange, while the line is idle
    Reset,      // the board restarts and does not reply to this request, nor for a while
    BoardLost,  // the board is away for some seconds
    PortLost,   // the whole port is away for some seconds
    Request,    // one bit of the request is wrong when it reaches the boards
    Part,       // the boards get the first bytes of the request only, or none
    NoEffect,   // a write is acknowledged and forgotten
    Clamp,      // a write is acknowledged and half of it is stored
    Blind,      // the reply to a read is wrong in a way that its sum does not show
    Collide,    // two boards speak at once, and the reply is neither's
    Busy,       // the boards are busy for some seconds, and then answer everything
    Stream,     // bytes without end for up to 1.5 s
    Change,     // the parameter that was asked for last changes by itself
    Swap        // the memories of the boards become those of another machine
};
inline constexpr std::size_t faultKindCount = 22;

class FaultPlan {
  public:
    double rate(FaultKind kind) const { return rates_[static_cast<std::size_t>(kind)]; }
    void setRate(FaultKind kind, double rate) { rates_[static_cast<std::size_t>(kind)] = rate; }

  private:
    std::array<double, faultKindCount> rates_{};
};

std::string_view nameOf(FaultKind kind);
// Throws std::invalid_argument for a name that no kind has.
FaultKind kindNamed(std::string_view name);

// "drop=0.01,flip=0.02"; an empty text is a plan without faults. The names are those of nameOf().
// Throws std::invalid_argument that says what is wrong.
FaultPlan parseFaults(std::string_view text);
// A line each, name and meaning.
std::string faultHelp();

// One generator a kind: asking for one kind more leaves what the others do as it was.
class FaultSource {
  public:
    FaultSource(const FaultPlan& plan, std::uint64_t seed);

    void setPlan(const FaultPlan& plan) { plan_ = plan; }
    bool strikes(FaultKind kind);
    Random& of(FaultKind kind) { return generators_[static_cast<std::size_t>(kind)]; }

  private:
    FaultPlan plan_;
    std::vector<Random> generators_;
};

}  // namespace kestrel::simulator

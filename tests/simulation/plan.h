// What one simulated run is made of: boards, line, faults and how strong, pages, and which of the user's acts.
// A seed draws a plan, a plan is one line of text, and the same line plays the same run to the letter.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/line.h"

namespace kestrel::testing {

/// Faults of the simulated machine come first, in its own order; then those of the way to it; then incidents.
enum class Fault {
    Silent,
    Slow,
    Late,
    Drop,
    Extra,
    Flip,
    WrongAck,
    Echo,
    Noise,
    Reset,
    BoardLost,
    PortLost,
    Request,   ///< the request is spoiled on its way
    Part,      ///< the port takes a part of the request, or none
    NoEffect,  ///< the board acknowledges a write and forgets it
    Clamp,     ///< the board acknowledges a write and stores another value
    Blind,     ///< the reply is changed in a way that its sum does not see
    Collide,   ///< two boards speak at once
    Busy,      ///< the boards are busy for seconds, then answer everything
    Stream,    ///< bytes without end
    Unplug,    ///< the cable is pulled and put back
    Denied,    ///< the port cannot be opened for a while
    Stray,     ///< bytes from nowhere
    Change,    ///< a board changes a value by itself
    Block,     ///< the program's loop stands still
    Restart,   ///< a board restarts
    Hush,      ///< a board, or all, say nothing for a while
    Swap,      ///< the boards' memories become those of another machine
    Disk       ///< nothing can be written to the disk, or a language file is spoiled
};
inline constexpr std::size_t FaultCount = static_cast<std::size_t>(Fault::Disk) + 1;
inline constexpr std::size_t FirstIncident = static_cast<std::size_t>(Fault::Busy);
std::string_view nameOf(Fault fault);

/// Chance that costs nothing to begin anew: a run has a thousand beginnings.
class Dice {
  public:
    explicit Dice(std::uint64_t seed) : state_(seed) {}
    std::uint64_t next() {
        std::uint64_t mixed = state_ += 0x9E3779B97F4A7C15;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
        return mixed ^ (mixed >> 31);
    }
    /// A whole number from low to high, both included.
    std::int64_t between(std::int64_t low, std::int64_t high) {
        return low + static_cast<std::int64_t>(next() % (static_cast<std::uint64_t>(high - low) + 1));
    }
    bool chance(double probability) { return static_cast<double>(next() >> 11) * 0x1p-53 < probability; }

  private:
    std::uint64_t state_;
};

/// Subjects of chance: each has a generator of its own, so that dropping one leaves the others as they were.
enum class Chance : std::uint32_t { Plan, Line, Incident, Act, Answer, Heal };
Dice chanceOf(std::uint64_t seed, Chance subject, std::uint32_t part = 0);

struct Plan {
    enum class Aim { All, Reads, Writes, Slaves };

    std::uint64_t seed = 1;
    int seconds = 60;      ///< of trouble, before the line heals
    int quietSeconds = 0;  ///< after that, with the pages left open
    bool hotDrinkBoard = true;
    bool sectorBoard = true;
    bool moving = false;  ///< the machine does things by itself
    bool rough = false;   ///< the faults are there from the start of the program
    int chunk = 0;        ///< milliseconds: bytes arrive at multiples of this
    Aim aim = Aim::All;   ///< which requests the faults of the line strike
    int actsPerMinute = 20;
    bool stay = false;     ///< all pages of the plan are open from the start, and the user closes none
    bool strange = false;  ///< the index files name other refresh and preload bytes than the installation's
    std::array<double, FaultCount> strength{};  ///< chance an exchange, or incidents a minute; 0: does not exist
    std::vector<std::string> pages;             ///< that the user may open
    std::vector<int> acts;                      ///< numbers of the acts that are done, of those that the seed draws

    // A small world is played out by numbers instead of chance.
    std::string script;            ///< the user's acts, a letter each: open, close, edit, port
    Fault single = Fault::Silent;  ///< strikes once ...
    int singleAt = 0;              ///< ... at this frame, or after this event if it is an incident; 0: never

    static Plan draw(std::uint64_t seed);
    /// The one-line form, and back. Throws std::invalid_argument that says what is wrong.
    std::string text() const;
    static Plan parse(const std::string& line);
};

}  // namespace kestrel::testing

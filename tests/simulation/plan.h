// What one simulated run is made of: boards, line, faults and how strong, pages, and which of the user's acts.
// A seed draws a plan, a plan is one line of text, and the same line plays the same run to the letter.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace kestrel::testing {

/// Chance that costs nothing to begin anew: a run has a thousand beginnings.
class Dice {
  public:
    explicit Dice(std::uint64_t seed) : state_(seed) {}
    std::uint64_t next();
    /// A whole number from low to high, both included.
    std::int64_t between(std::int64_t low, std::int64_t high) {
        return low + static_cast<std::int64_t>(next() % (static_cast<std::uint64_t>(high - low) + 1));
    }
    bool chance(double probability) { return static_cast<double>(next() >> 11) * 0x1p-53 < probability; }
    /// Any one of a table that is not empty.
    template <class Table>
    auto of(const Table& table) {
        return *std::next(std::begin(table), between(0, std::ssize(table) - 1));
    }

  private:
    std::uint64_t state_;
};

/// Subjects of chance: each has a generator of its own, so that dropping one leaves the others as they were.
enum class Chance : std::uint32_t { Plan, Files, When, Incident, Act, Answer };
Dice chanceOf(std::uint64_t seed, Chance subject, std::uint32_t part = 0);

/// Faults by name, those of the simulated machine and those of the computer, each with its strength.
using Strengths = std::map<std::string, double>;
inline constexpr const char* PortDenied = "denied";    ///< the port cannot be opened for a while
inline constexpr const char* LoopBlocked = "block";    ///< the program's loop stands still
inline constexpr const char* DiskTrouble = "disk";     ///< nothing can be written, or a language file is spoiled
inline constexpr const char* WindowClosed = "quit";    ///< the user has enough
inline constexpr const char* CablesChanged = "cable";  ///< the ports' cables are changed over, to the second machine

struct Plan {
    enum Aim { All, Reads, Writes, Slaves };
    enum Other { NoOther, SameIdentity, OtherMaster, OtherBoards };

    std::uint64_t seed = 1;
    int seconds = 60;                ///< of trouble, before the line heals
    int quiet = 0;                   ///< seconds after that, with the pages left open
    int hot = 1, sector = 1;         ///< boards that are there
    int moving = 0;                  ///< the machine does things by itself
    int rough = 0;                   ///< the faults are there from the start of the program
    int strange = 0;                 ///< the index files name other refresh and preload bytes than the installation's
    int chunk = 0;                   ///< milliseconds: bytes arrive at multiples of this
    int aim = All;                   ///< which requests the faults of the line strike
    int pace = 20;                   ///< acts a minute
    int stay = 0;                    ///< all pages of the plan are open from the start, and the user closes none
    int other = NoOther;             ///< a second machine, on the second port
    int late = 0;                    ///< a slave board that answers only when the program has started
    int frame = 0, event = 0;        ///< of the trouble, at which `single` strikes; 0: at none
    std::string single;              ///< a fault that strikes once
    std::string script;              ///< the user's acts in a small world, a letter each, in place of `acts`
    Strengths faults;                ///< chance an exchange
    Strengths incidents;             ///< how many a minute
    std::vector<std::string> pages;  ///< that the user may open
    std::vector<int> acts;           ///< numbers of the acts that are done, of those that the seed draws

    static Plan draw(std::uint64_t seed);
    /// As many acts as pace and time allow.
    void drawActs();
    /// The one-line form, and back. Throws std::invalid_argument that says what is wrong.
    std::string text() const;
    static Plan parse(const std::string& line);
};

/// Names of all faults of the line, and of all incidents.
const std::vector<std::string>& allFaults();
const std::vector<std::string>& allIncidents();

}  // namespace kestrel::testing

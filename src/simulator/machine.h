// A whole vending machine behind one serial line: a master board and two boards behind it.
// It is passive: it owns no clock, timer or thread; its owner passes the time and carries the bytes.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "simulator/exchange.h"
#include "simulator/faults.h"
#include "simulator/types.h"

namespace kestrel::simulator {

// What a board says about itself. What is left open follows from the board's parameter file.
struct Identity {
    std::optional<int> kind;      // 0 to 255
    std::optional<int> type;      // 0 to 65535, the four digits in the file's name
    std::optional<int> software;  // 0 to 255, the letter in the file's name counted from "A"
    std::optional<int> release;   // 0 to 255, the two digits in the file's name
    std::optional<int> revision;  // 0 to 255
};

// What the machine's clock shows when it is switched on.
struct DateTime {
    int year = 2024;  // 2000 to 2099
    int month = 5;
    int day = 14;
    int hour = 10;
    int minute = 30;
};

struct MachineOptions {
    std::filesystem::path directory;  // of the installation: the index files *.inx
    bool hotDrinkBoard = true;
    bool sectorBoard = true;
    std::uint64_t seed = 1;
    bool moving = true;  // false: no sales, alarms, drifting inputs or temperatures, for tests that compare values
    DateTime clock;
    FaultPlan faults;
    Micros latency = 0;  // of the adapter: what has arrived at the PC is handed over at multiples of it
    // The parameter file that an identity names lays out its board; if there is none, the board keeps the layout of
    // the alphabetically last file of its number and only reports the identity.
    std::array<Identity, boardCount> identities;
};

class Machine {
  public:
    // The machine is switched on at time 0. Throws std::runtime_error when an index file is missing or unusable.
    explicit Machine(const MachineOptions& options);
    ~Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    // The PC puts these bytes on the line from `now` on, behind what it is still sending; byte i has arrived i + 1 byte
    // times later.
    void send(Micros now, const Bytes& bytes);

    // When the next byte that is on its way to the PC is there for it. A reply that a board has yet to begin does not
    // count: whoever waits asks nextEvent().
    std::optional<Micros> nextOutput() const;
    // All bytes that are there for the PC by `now`.
    Bytes takeOutput(Micros now);

    // Lets everything happen that is due by `now`. Time never goes back: an earlier `now` changes nothing.
    void advance(Micros now);
    // The earliest time at which advance() or takeOutput() would do something.
    std::optional<Micros> nextEvent() const;

    // The board's memory at a parameter's address. A look from outside: nothing reacts to setValue().
    // Both throw std::out_of_range for a board that is not fitted or a number that its file does not have.
    std::uint32_t value(Board board, int parameter) const;
    void setValue(Board board, int parameter, std::uint32_t value);
    bool fitted(Board board) const;

    // Faults by hand, at the time that was last passed. While the port is lost, bytes of both directions are lost.
    bool portOpen() const;
    void portLost();
    void portBack();
    void boardReset(Board board);
    void setBoardSilent(Board board, bool silent);
    void setFaults(const FaultPlan& plan);
    void setLatency(Micros latency);
    // A fault that needs no exchange strikes at the time that was last passed: Noise, Reset, BoardLost, PortLost, Busy,
    // Stream, Change or Swap; where it strikes one board, chance says which. Throws std::invalid_argument for another.
    void strike(FaultKind kind);

    // Called for every frame and every piece of garbage, when the board has made up its mind about it.
    std::function<void(const Exchange&)> onExchange;

  private:
    struct State;
    void receive(std::uint8_t byte);
    void serve(Exchange exchange);
    bool hears(Exchange& exchange);
    bool begin(FaultKind kind, Board board);
    Bytes obey(Exchange& exchange);
    void answer(Exchange& exchange);
    void loseBoard(Board board, Micros away);
    void awaitBoard(Board board, const Setting& presence);
    void losePort(Micros away);
    void stream();
    void swapMemories();
    void report(const Exchange& exchange) const;

    std::unique_ptr<State> state_;
};

}  // namespace kestrel::simulator

// A copy of the installation in a temporary directory, and a machine on it, for the tests of the simulator.
// A test may spoil the copy.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "simulator/machine.h"

namespace kestrel::simulator::tests {

using enum Board;

struct Entry {
    std::uint32_t address;
    int width;
    std::uint32_t preload;
};

class SimulatorTest : public testing::Test {
  protected:
    SimulatorTest();
    ~SimulatorTest() override;

    void writeParameters(const std::string& name, const std::vector<Entry>& entries) const;

    MachineOptions options;  // at rest: nothing happens by itself but the clock
};

int widthOf(Board board, int parameter);

// The frames of a PC, built by hand.
Bytes readFrame(Board board, int parameter);
Bytes writeFrame(Board board, int parameter, std::uint32_t value);
Bytes goodAck(const Bytes& write);

// A machine and the PC before it, which sends one frame at a time.
class Bench : public Machine {
  public:
    using Machine::Machine;

    // What came back within the time.
    Bytes exchange(const Bytes& frame, Micros wait = second);
    // The value of a parameter as read over the line; fails the test on a bad reply.
    std::uint32_t read(Board board, int parameter);
    bool write(Board board, int parameter, std::uint32_t value);  // true when rightly acknowledged
    void wait(Micros time);
    // Steps, a word each: "1.2=60" writes parameter 2 of the hot-drink board and "1.2?60" reads and compares it;
    // "1.2&4" and "1.2~4" want a bit of it set or clear; "i1.17?7" reads an identity record; "1!" restarts the board;
    // "+40" lets as many seconds pass.
    void play(const std::string& steps);

    Micros now = 0;
};

bool contains(const std::string& text, const std::string& part);

// Tells what the order is refused with, which must be an Error; "taken" when it is not.
template <typename Error, typename Order>
std::string refusalOf(Order order) {
    try {
        order();
    } catch (const Error& error) {
        return error.what();
    }
    return "taken";
}

}  // namespace kestrel::simulator::tests

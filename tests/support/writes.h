// What the program wrote, as the machine's end of the line saw it.
// Parameter numbers are found by the address in the frame, not by the program's tables.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "link/link_engine.h"
#include "link/param_table.h"
#include "platform/basic_controls.h"
#include "platform/switches.h"
#include "support/world.h"

namespace kestrel::testing {

/// Collects every write frame from now on, repeats included.
class WriteLog {
  public:
    explicit WriteLog(World& world) : machine_(world.machine) {
        machine_.onExchange = [this](const simulator::Exchange& exchange) {
            if (exchange.request.write)
                writes_.push_back({static_cast<int>(exchange.request.board), exchange.parameter, exchange.value});
        };
    }
    ~WriteLog() { machine_.onExchange = nullptr; }
    WriteLog(const WriteLog&) = delete;
    WriteLog& operator=(const WriteLog&) = delete;

    /// What was collected since the last call, by bank and number: which of two writes the scan meets first depends
    /// on where it stands.
    Writes take() { return sorted(takeInOrder()); }
    /// The same in the order of the line.
    Writes takeInOrder() { return std::exchange(writes_, {}); }

  private:
    simulator::Machine& machine_;
    Writes writes_;
};

/// Does something as the user, wherever the scan may stand, lets the line come to rest, and gives what was written, in
/// order of parameters.
template <class Act>
Writes writesOf(World& world, Act&& act) {
    WriteLog log(world);
    if (Link().LinkIdle) CurrentBank = (CurrentBank + 1) % Banks;
    act();
    EXPECT_TRUE(world.settle());
    return log.take();
}

/// The user moves a bar: its figure changes, and the mark of waiting goes, only when the board has confirmed.
inline void expectMove(World& world, ScrollBar& bar, const Label& figure, int to, const std::string& text,
                       const Writes& writes) {
    const std::string before = figure.Caption;
    const auto move = [&] {
        bar.UserMove(to);
        EXPECT_EQ(figure.Caption.get(), before);
        EXPECT_TRUE(bar.waiting());
    };
    EXPECT_EQ(writesOf(world, move), writes) << bar.accessibleName();
    EXPECT_EQ(figure.Caption.get(), text) << bar.accessibleName();
    EXPECT_FALSE(bar.waiting()) << bar.accessibleName();
}

/// The user moves a switch, which the board then confirms.
inline void expectMove(World& world, SteppedSwitch& control, int to, const Writes& writes) {
    EXPECT_EQ(writesOf(world, [&] { control.UserMove(to); }), writes) << control.accessibleName();
    EXPECT_EQ(control.Position, to) << control.accessibleName();
    EXPECT_FALSE(control.waiting()) << control.accessibleName();
}

}  // namespace kestrel::testing

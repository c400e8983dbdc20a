// Test dispenses.
// A dispense takes as long as its recipe says; the test counters go up when it has ended.
#include "simulator/dispensing.h"

#include <algorithm>

#include "simulator/outputs.h"

namespace kestrel::simulator {
namespace {

constexpr std::uint32_t dispenseCommand = 2;  // a whole drink, or a pair of sector motors
constexpr std::uint32_t powderCommand = 18;
constexpr std::uint32_t waterCommand = 26;  // a drink without its powders

constexpr std::uint32_t keyCount = 9;
// A sector pair is told by its arguments: row times 16, and the column from 12 on.
constexpr std::uint32_t firstColumn = 12;
constexpr std::uint32_t rowUnit = 16;
constexpr std::uint32_t pairChoices = 6;
constexpr int sectorsInRow = 8;

constexpr Micros tenth = 100 * millisecond;
constexpr Micros cupTime = 2 * second;  // before the first step
constexpr Micros dripTime = second;     // after the last one
constexpr Micros sectorTime = 5 * second;

}  // namespace

void Dispensing::written(const Setting& parameter) {
    if (parameter != master::Command || world_.hasBit(master::MachineState, busyBit)) return;
    const std::uint32_t command = world_.get(master::Command);
    const std::uint32_t first = world_.get(master::CommandArgument[0]);
    const std::uint32_t secondArgument = world_.get(master::CommandArgument[1]);
    if (command == powderCommand) {
        dispensePowder(static_cast<int>(first), secondArgument);
    } else if (command == dispenseCommand && first >= firstColumn) {
        runSectorPair(secondArgument / rowUnit, first - firstColumn + 1);
    } else if (command == dispenseCommand || command == waterCommand) {
        if (first < 1 || first > keyCount || secondArgument > 1) return;
        dispenseDrink(static_cast<int>(first - 1 + keyCount * secondArgument), command == dispenseCommand);
    }
}

void Dispensing::dispenseDrink(int selection, bool withPowders) {
    const Recipe recipe = readRecipe(world_, selection);
    if (recipe[0].valve == 0 || !world_.isFitted(Board::HotDrink)) return;
    world_.setBit(master::MachineState, busyBit, true);
    const std::uint64_t mine = ++order_;
    world_.agenda.after(cupTime, [=, this] {
        if (mine == order_) runStep(selection, recipe, 0, withPowders);
    });
}

// Runs the step and those behind it.
void Dispensing::runStep(int selection, const Recipe& recipe, int step, bool withPowders) {
    const std::uint32_t time = step < stepCount ? stepTime(world_, recipe, step, withPowders) : 0;
    if (time == 0) {
        driveStep({}, false);
        finishLater(dripTime, [this, selection] {
            world_.add(master::TotalTests, 1);
            world_.add(hot_drink::SelectionTests[selection], 1);
        });
        return;
    }
    driveStep(recipe[static_cast<std::size_t>(step)], withPowders);
    const std::uint64_t mine = order_;
    world_.agenda.after(time * tenth, [=, this] {
        if (mine == order_) runStep(selection, recipe, step + 1, withPowders);
    });
}

void Dispensing::dispensePowder(int selection, std::uint32_t solenoid) {
    const std::uint32_t time = world_.get(master::PowderTestTime);
    const bool known = selection < selectionCount && solenoid < stepCount * powderCount;
    if (!known || time == 0 || !world_.isFitted(Board::HotDrink)) return;
    world_.setBit(master::MachineState, busyBit, true);
    ++order_;
    if (!world_.hasBit(hot_drink::TestState, inTestBit)) {
        drive(world_, powder(solenoid % powderCount + 1), true);
    }
    finishLater(time * tenth, [this, selection] {
        world_.add(master::TotalTests, 1);
        world_.add(hot_drink::SelectionTests[selection], 1);
    });
}

void Dispensing::runSectorPair(std::uint32_t row, std::uint32_t column) {
    const bool known = row >= 1 && row <= pairChoices && column <= pairChoices;
    if (!known || !world_.isFitted(Board::Sector)) return;
    world_.setBit(master::MachineState, busyBit, true);
    ++order_;
    const int index = static_cast<int>(row - 1) * sectorsInRow + static_cast<int>(column - 1);
    finishLater(sectorTime, [this, index] {
        world_.add(master::TotalTests, 1);
        world_.add(sector::SectorTests[index], 1);
    });
}

void Dispensing::finishLater(Micros time, std::function<void()> count) {
    world_.agenda.after(time, [this, count = std::move(count), mine = order_] {
        if (mine != order_) return;
        count();
        finish();
    });
}

void Dispensing::finish() {
    ++order_;
    world_.setBit(master::MachineState, busyBit, false);
    driveStep({}, false);
}

// Switches on what the step needs and everything else that a dispense uses off.
void Dispensing::driveStep(const RecipeStep& step, bool withPowders) {
    if (world_.hasBit(hot_drink::TestState, inTestBit)) return;
    for (unsigned valve = 1; valve <= secondBrewer; ++valve) drive(world_, waterValve(valve), valve == step.valve);
    drive(world_, waterPump, step.valve != 0);
    drive(world_, firstBrewerMotor, step.valve == firstBrewer);
    drive(world_, secondBrewerMotor, step.valve == secondBrewer);
    const bool mixing = withPowders && step.valve < firstBrewer && step.mixerTime != 0;
    for (unsigned number = 1; number <= 3; ++number) drive(world_, mixer(number), mixing && number == step.valve);
    for (unsigned number = 1; number <= powderCount; ++number) {
        drive(world_, powder(number), withPowders && step.powders[number - 1].time != 0);
    }
}

void Dispensing::reset(Board board) {
    if (board == Board::Master) {
        for (const Setting& parameter :
             {master::Command, master::CommandArgument[0], master::CommandArgument[1], master::PowderTestTime}) {
            world_.set(parameter, 0);
        }
    }
    if (world_.hasBit(master::MachineState, busyBit)) finish();
}

}  // namespace kestrel::simulator

// The test modes of the hot-drink and the sector board, and the sector board's motors on their way to zero.
// Every order to the outputs starts the test time anew.
#include "simulator/test_modes.h"

namespace kestrel::simulator {
namespace {

constexpr std::uint32_t testCommand = 1;
constexpr std::uint32_t outputCommand = 2;
constexpr std::uint32_t zeroCommand = 3;

constexpr Micros zeroingTime = 4 * second;

constexpr unsigned sectorGroups = 0x3F;
constexpr unsigned compressor = 0x80;

unsigned lowestBit(unsigned bits) { return bits & (~bits + 1); }

const Setting& testStateOf(Board board) { return board == Board::HotDrink ? hot_drink::TestState : sector::TestState; }

}  // namespace

void TestModes::written(const Setting& parameter) {
    if (parameter == hot_drink::Command) commandHotDrink(world_.get(parameter));
    if (parameter == sector::Command) commandSector(world_.get(parameter));
}

void TestModes::commandHotDrink(std::uint32_t command) {
    if (command == testCommand) start(Board::HotDrink, world_.get(hot_drink::CommandArgument[0]));
    if (command != outputCommand || !inTest(Board::HotDrink)) return;
    OutputBytes bytes{};
    int index = 0;
    for (std::uint32_t& byte : bytes) byte = world_.get(hot_drink::CommandArgument[index++]);
    setOutputs(Board::HotDrink, bytes);
    prolong(Board::HotDrink);
}

void TestModes::commandSector(std::uint32_t command) {
    if (command == testCommand) start(Board::Sector, world_.get(sector::CommandArgument[0]));
    if (command == zeroCommand) zeroMotors();
    if (command != outputCommand || !inTest(Board::Sector)) return;
    // The board drives one output at a time: of several bits the lowest counts.
    const std::uint32_t wanted = world_.get(sector::CommandArgument[0]);
    const unsigned group = lowestBit(wanted & sectorGroups);
    const unsigned bit = group == 0 ? 0 : lowestBit(world_.get(sector::CommandArgument[1]));
    setOutputs(Board::Sector, {group | (wanted & compressor), bit});
    prolong(Board::Sector);
}

void TestModes::start(Board board, std::uint32_t seconds) {
    if (seconds == 0) {
        stop(board);
        return;
    }
    if (!inTest(board)) setOutputs(board, {});
    length_[indexOf(board)] = seconds * second;
    world_.setBit(testStateOf(board), inTestBit, true);
    prolong(board);
}

void TestModes::prolong(Board board) {
    Micros& end = end_[indexOf(board)];
    end = world_.agenda.now() + length_[indexOf(board)];
    world_.agenda.at(end, [this, board, planned = end] {
        if (inTest(board) && end_[indexOf(board)] == planned) stop(board);
    });
}

void TestModes::stop(Board board) {
    if (!inTest(board)) return;
    world_.setBit(testStateOf(board), inTestBit, false);
    setOutputs(board, {});
}

bool TestModes::inTest(Board board) const { return world_.hasBit(testStateOf(board), inTestBit); }

void TestModes::setOutputs(Board board, const OutputBytes& bytes) {
    if (board == Board::HotDrink) {
        int index = 0;
        for (const std::uint32_t byte : bytes) world_.set(hot_drink::Outputs[index++], byte);
    } else {
        world_.set(sector::OutputGroup, bytes[0]);
        world_.set(sector::OutputBit, bytes[1]);
    }
}

void TestModes::zeroMotors() {
    const std::uint64_t mine = ++zeroing_;
    world_.setBit(sector::TestState, zeroingBit, true);
    world_.agenda.after(zeroingTime, [this, mine] {
        if (mine == zeroing_) world_.setBit(sector::TestState, zeroingBit, false);
    });
}

// What a restart forgets: the mode, the outputs and the mailbox.
void TestModes::reset(Board board) {
    if (board == Board::Master) return;
    stop(board);
    const bool hotDrink = board == Board::HotDrink;
    world_.set(hotDrink ? hot_drink::Command : sector::Command, 0);
    const SettingRange& mailbox = hotDrink ? hot_drink::CommandArgument : sector::CommandArgument;
    for (int i = 0; i < mailbox.size(); ++i) world_.set(mailbox[i], 0);
    if (hotDrink) return;
    ++zeroing_;
    world_.setBit(sector::TestState, zeroingBit, false);
}

}  // namespace kestrel::simulator

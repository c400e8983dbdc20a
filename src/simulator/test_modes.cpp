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

int testStateOf(Board board) { return board == Board::HotDrink ? hot_drink::testState : sector::testState; }

}  // namespace

void TestModes::written(Board board, int parameter) {
    if (board == Board::HotDrink && parameter == hot_drink::command) commandHotDrink(world_.get(board, parameter));
    if (board == Board::Sector && parameter == sector::command) commandSector(world_.get(board, parameter));
}

void TestModes::commandHotDrink(std::uint32_t command) {
    if (command == testCommand) start(Board::HotDrink, world_.get(Board::HotDrink, hot_drink::mailbox));
    if (command != outputCommand || !inTest(Board::HotDrink)) return;
    std::array<std::uint32_t, hot_drink::mailboxSize> bytes{};
    int parameter = hot_drink::mailbox;
    for (std::uint32_t& byte : bytes) byte = world_.get(Board::HotDrink, parameter++);
    setOutputs(Board::HotDrink, bytes);
    prolong(Board::HotDrink);
}

void TestModes::commandSector(std::uint32_t command) {
    if (command == testCommand) start(Board::Sector, world_.get(Board::Sector, sector::mailbox));
    if (command == zeroCommand) zeroMotors();
    if (command != outputCommand || !inTest(Board::Sector)) return;
    // The board drives one output at a time: of several bits the lowest counts.
    const std::uint32_t wanted = world_.get(Board::Sector, sector::mailbox);
    const unsigned group = lowestBit(wanted & sectorGroups);
    const unsigned bit = group == 0 ? 0 : lowestBit(world_.get(Board::Sector, sector::mailbox + 1));
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
    world_.setBit(board, testStateOf(board), inTestBit, true);
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
    world_.setBit(board, testStateOf(board), inTestBit, false);
    setOutputs(board, {});
}

bool TestModes::inTest(Board board) const { return world_.hasBit(board, testStateOf(board), inTestBit); }

void TestModes::setOutputs(Board board, const std::array<std::uint32_t, hot_drink::mailboxSize>& bytes) {
    if (board == Board::HotDrink) {
        int parameter = hot_drink::outputs;
        for (const std::uint32_t byte : bytes) world_.set(board, parameter++, byte);
    } else {
        world_.set(board, sector::outputGroup, bytes[0]);
        world_.set(board, sector::outputBit, bytes[1]);
    }
}

void TestModes::zeroMotors() {
    const std::uint64_t mine = ++zeroing_;
    world_.setBit(Board::Sector, sector::testState, zeroingBit, true);
    world_.agenda.after(zeroingTime, [this, mine] {
        if (mine == zeroing_) world_.setBit(Board::Sector, sector::testState, zeroingBit, false);
    });
}

// What a restart forgets: the mode, the outputs and the mailbox.
void TestModes::reset(Board board) {
    if (board == Board::Master) return;
    stop(board);
    const bool hotDrink = board == Board::HotDrink;
    const int command = hotDrink ? hot_drink::command : sector::command;
    const int last = hotDrink ? hot_drink::mailbox + hot_drink::mailboxSize : sector::mailbox + sector::mailboxSize;
    for (int parameter = command; parameter < last; ++parameter) world_.set(board, parameter, 0);
    if (hotDrink) return;
    ++zeroing_;
    world_.setBit(Board::Sector, sector::testState, zeroingBit, false);
}

}  // namespace kestrel::simulator

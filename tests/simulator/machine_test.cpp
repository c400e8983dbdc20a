// The machine as the PC meets it: frames, times, identities, the clock, and faults by hand.
// A mistake here would make the program's own tests pass against a machine that no board resembles.
#include "simulator/machine.h"

#include <stdexcept>

#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

constexpr auto master = Board::Master;
constexpr auto hotDrink = Board::HotDrink;
constexpr auto sector = Board::Sector;

class MachineTest : public testing::Test {
  protected:
    MachineOptions still() const {
        MachineOptions options = installation.options();
        options.moving = false;
        return options;
    }
    Installation installation;
};

// Frames worked out by hand: what the PC sends and what must come back, to the byte.
TEST_F(MachineTest, AnswersKnownFramesByteForByte) {
    installation.writeParameters("W0256AP03.inx", {{0x001234, 2, 1000}, {0x00ABCD, 4, 0xFFFFFFFF}});
    installation.writeParameters("W0292AP07.inx", {{0x001234, 2, 1000}});
    installation.writeParameters("W0245AB04.inx", {{0x001234, 1, 7}});
    Machine machine(still());
    Pc pc(machine);
    // The state laid over the preload (presence words stand in parameters 1 and 2) is no part of this test.
    machine.setValue(master, 1, 1000);
    machine.setValue(master, 2, 0xFFFFFFFF);
    const struct {
        const char* what;
        Bytes request;
        Bytes reply;
    } cases[] = {
        {"port probe", {0, 0, 0, 0, 0}, {0, 0}},
        {"master, read 2", {0x01, 0x34, 0x12, 0x00, 0x47}, {0xE8, 0x03, 0xEB}},
        {"master, read 4", {0x03, 0xCD, 0xAB, 0x00, 0x7B}, {0xFF, 0xFF, 0xFF, 0xFF, 0xFC}},
        {"master, write 2", {0x81, 0x34, 0x12, 0x00, 0xE8, 0x03, 0xB2}, {0x64}},
        {"hot-drink, read 2", {0xF1, 0x34, 0x12, 0x00, 0x01, 0x49, 0x81}, {0xE8, 0x03, 0xEB}},
        {"sector, write 1", {0xF2, 0x34, 0x12, 0x00, 0x80, 0x56, 0x64, 0x72}, {0xE4}},
        {"sector, the written value", {0xF1, 0x34, 0x12, 0x00, 0x00, 0x56, 0x8D}, {0x64, 0x64}},
        {"bad sum", {0x01, 0x34, 0x12, 0x00, 0x48}, {}},
        {"unknown address", {0x00, 0x99, 0x99, 0x00, 0x32}, {}},
        {"more bytes than lie there", {0x03, 0x34, 0x12, 0x00, 0x49}, {}},
        {"no board of this address", {0xF1, 0x34, 0x12, 0x00, 0x01, 0x50, 0x88}, {}},
        {"kind and command differ", {0xF1, 0x34, 0x12, 0x00, 0x80, 0x49, 0x00}, {}},
        {"width of five", {0x04, 0x34, 0x12, 0x00, 0x4A}, {}},
    };
    for (const auto& c : cases) EXPECT_EQ(hexOf(pc.exchange(c.request)), hexOf(c.reply)) << c.what;
}

TEST_F(MachineTest, TakesItsTimeByteByByte) {
    Machine machine(still());
    const Bytes request = readFrame(hotDrink, Installation::address(hotDrink, 7), 1);
    machine.send(1000, request);
    const Micros heard = 1000 + 7 * 521;
    machine.advance(heard + 1999);
    EXPECT_FALSE(machine.nextOutput()) << "a board needs at least 2 ms";
    machine.advance(heard + 6000);
    ASSERT_TRUE(machine.nextOutput());
    const Micros first = *machine.nextOutput();
    EXPECT_EQ(machine.takeOutput(first - 1).size(), 0U);
    EXPECT_EQ(machine.takeOutput(first).size(), 1U);
    EXPECT_EQ(machine.nextOutput(), first + 521);
    EXPECT_EQ(machine.takeOutput(first + 520).size(), 0U);
    EXPECT_EQ(machine.takeOutput(first + 521).size(), 1U);
}

// Half a frame, a frame cut in two, noise: after 50 ms of silence a board listens afresh.
TEST_F(MachineTest, FindsTheNextFrameAfterSilence) {
    const Bytes good = readFrame(master, Installation::address(master, 7), 1);
    const struct {
        const char* what;
        Bytes before;
        Micros gap;
        bool answered;
    } cases[] = {
        {"half a frame, long pause", {0x01, 0x34}, 51 * millisecond, true},
        {"half a frame, short pause", {0x01, 0x34}, 20 * millisecond, false},
        {"noise, long pause", {0xFF, 0x77, 0x4F}, 51 * millisecond, true},
        {"noise, short pause", {0xFF, 0x77, 0x4F}, 20 * millisecond, false},
        {"a bad sum, short pause", {0x00, 0x34, 0x12, 0x00, 0x00}, 20 * millisecond, false},
        {"a whole frame, no pause", good, 0, true},
    };
    for (const auto& c : cases) {
        Machine machine(still());
        machine.send(0, c.before);
        const Micros start = static_cast<Micros>(c.before.size()) * byteTime;
        machine.takeOutput(start + c.gap);
        machine.send(start + c.gap, good);
        EXPECT_EQ(!machine.takeOutput(start + c.gap + 40 * millisecond).empty(), c.answered) << c.what;
    }
}

TEST_F(MachineTest, FrameInPiecesIsOneFrame) {
    const Bytes frame = writeFrame(sector, Installation::address(sector, 287), 2, 0x1234);
    for (std::size_t split = 1; split < frame.size(); ++split) {
        Machine machine(still());
        const auto cut = frame.begin() + static_cast<std::ptrdiff_t>(split);
        machine.send(0, Bytes(frame.begin(), cut));
        machine.send(45 * millisecond, Bytes(cut, frame.end()));
        EXPECT_EQ(machine.takeOutput(second), Bytes{static_cast<std::uint8_t>(frame.back() * 2)}) << split;
        EXPECT_EQ(machine.value(sector, 287), 0x1234U);
    }
}

TEST_F(MachineTest, IdentityFollowsFromTheLastFileOfTheBoard) {
    installation.writeParameters("W0256AP02.inx", {});
    installation.writeParameters("W0256AO99.inx", {});
    installation.writeParameters("W0299AP09.inx", {});  // of another board
    Machine machine(still());
    Pc pc(machine);
    EXPECT_EQ(pc.readIdentity(master, 17), 3U);
    EXPECT_EQ(pc.readIdentity(master, 11), 15U);
    EXPECT_EQ(pc.readIdentity(master, 12), 18U);
    EXPECT_EQ(pc.readIdentity(master, 13) + 256 * pc.readIdentity(master, 14), 256U);
    EXPECT_GE(pc.readIdentity(master, 18), 27U);
    EXPECT_EQ(pc.readIdentity(sector, 11), 1U);
    EXPECT_EQ(pc.readIdentity(sector, 13), 245U);
    EXPECT_EQ(pc.readIdentity(hotDrink, 17), 7U);
}

TEST_F(MachineTest, RefusesInstallationsThatItCannotServe) {
    const struct {
        const char* what;
        std::function<void(const Installation&)> damage;
        std::string named;
    } cases[] = {
        {"no identity file", [](const Installation& i) { std::filesystem::remove(i.directory() / "W0292.inx"); },
         "W0292.inx"},
        {"no parameter file", [](const Installation& i) { std::filesystem::remove(i.directory() / "W0245AB04.inx"); },
         "W0245A"},
        {"width of 16",
         [](const Installation& i) {
             i.writeRaw("W0256AP03.inx", {0, 0, 0x0F, 0, 1, 0, 0, 0, 0});
         },
         "W0256AP03.inx: record 1"},
        {"no directory", [](const Installation& i) { std::filesystem::remove_all(i.directory()); }, "machine_test_"},
    };
    for (const auto& c : cases) {
        const Installation other;
        c.damage(other);
        try {
            const Machine machine(other.options());
            ADD_FAILURE() << c.what;
        } catch (const std::runtime_error& error) {
            EXPECT_NE(std::string(error.what()).find(c.named), std::string::npos) << error.what();
        }
    }
}

TEST_F(MachineTest, BoardsThatAreNotFittedNeedNoFilesAndAreSilent) {
    std::filesystem::remove(installation.directory() / "W0292.inx");
    MachineOptions options = still();
    options.hotDrinkBoard = false;
    Machine machine(options);
    Pc pc(machine);
    EXPECT_TRUE(pc.exchange(readFrame(hotDrink, Installation::identityAddress(hotDrink, 1), 1)).empty());
    EXPECT_EQ(pc.read(master, 1) & 4, 0U);
    EXPECT_EQ(pc.read(master, 2) & 4, 4U);
    EXPECT_THROW(machine.value(hotDrink, 1), std::out_of_range);
    EXPECT_THROW(machine.value(master, 0), std::out_of_range);
    EXPECT_THROW(machine.setValue(master, 401, 0), std::out_of_range);
}

TEST_F(MachineTest, OverlappingParametersShareBytesAndOthersDoNot) {
    installation.writeParameters("W0245AB04.inx", {{0x100, 2, 0}, {0x101, 1, 0}, {0x010000, 1, 0}, {0x0001, 1, 0}});
    Machine machine(still());
    machine.setValue(sector, 3, 0x44);
    machine.setValue(sector, 4, 0x55);
    machine.setValue(sector, 2, 0x33);
    machine.setValue(sector, 1, 0xAABBCC);
    EXPECT_EQ(machine.value(sector, 1), 0xBBCCU);
    EXPECT_EQ(machine.value(sector, 2), 0xBBU);
    EXPECT_EQ(machine.value(sector, 3), 0x44U);
    EXPECT_EQ(machine.value(sector, 4), 0x55U);
}

TEST_F(MachineTest, ClockRunsOverTheEndsOfTheCalendar) {
    const struct {
        std::array<std::uint32_t, 5> before;  // hour, minute, day, month, year
        std::array<std::uint32_t, 5> after;
    } cases[] = {
        {{10, 58, 14, 5, 24}, {10, 59, 14, 5, 24}}, {{10, 59, 14, 5, 24}, {11, 0, 14, 5, 24}},
        {{23, 59, 28, 2, 23}, {0, 0, 1, 3, 23}},    {{23, 59, 28, 2, 24}, {0, 0, 29, 2, 24}},
        {{23, 59, 30, 4, 24}, {0, 0, 1, 5, 24}},    {{23, 59, 31, 12, 24}, {0, 0, 1, 1, 25}},
        {{23, 59, 31, 12, 99}, {0, 0, 1, 1, 0}},
    };
    for (const auto& c : cases) {
        Machine machine(still());
        Pc pc(machine);
        for (int i = 0; i < 5; ++i) EXPECT_TRUE(pc.write(master, 239 + i, c.before[static_cast<std::size_t>(i)]));
        pc.wait(60 * second);
        const std::array<std::uint32_t, 5> now{machine.value(master, 245), machine.value(master, 244),
                                               machine.value(master, 246), machine.value(master, 247),
                                               machine.value(master, 248)};
        EXPECT_EQ(now, c.after);
    }
}

TEST_F(MachineTest, ClockIgnoresWhatNoClockShowsAndRestartsItsMinute) {
    Machine machine(still());
    Pc pc(machine);
    pc.write(master, 240, 20);
    pc.write(master, 240, 60);
    pc.write(master, 242, 13);
    EXPECT_EQ(pc.read(master, 244), 20U);
    EXPECT_LE(pc.read(master, 247), 12U);
    pc.wait(50 * second);
    pc.write(master, 240, 40);
    pc.wait(50 * second);
    EXPECT_EQ(pc.read(master, 244), 40U);
    pc.wait(10 * second);
    EXPECT_EQ(pc.read(master, 244), 41U);
}

TEST_F(MachineTest, SilentBoardAnswersNothingAndTheMasterSilencesAll) {
    Machine machine(still());
    Pc pc(machine);
    const Bytes probe = readFrame(sector, Installation::address(sector, 51), 1);
    machine.setBoardSilent(hotDrink, true);
    EXPECT_FALSE(pc.exchange(probe).empty());
    machine.setBoardSilent(master, true);
    EXPECT_TRUE(pc.exchange(probe).empty());
    machine.setBoardSilent(master, false);
    EXPECT_FALSE(pc.exchange(probe).empty());
    EXPECT_TRUE(pc.exchange(readFrame(hotDrink, Installation::address(hotDrink, 7), 1)).empty());
}

TEST_F(MachineTest, RestartCutsTheReplyAndTheBoardComesBack) {
    Machine machine(still());
    const Bytes read = readFrame(master, Installation::address(master, 159), 4);
    machine.send(0, read);
    while (!machine.nextOutput()) machine.advance(*machine.nextEvent());
    const Micros middle = *machine.nextOutput() + 2 * byteTime;
    EXPECT_EQ(machine.takeOutput(middle).size(), 3U);
    machine.boardReset(master);
    EXPECT_EQ(machine.takeOutput(middle + 100 * millisecond).size(), 0U);
    Pc pc(machine);
    pc.now = middle + 200 * millisecond;
    EXPECT_TRUE(pc.exchange(read).empty());
    pc.wait(second);
    EXPECT_EQ(pc.exchange(read).size(), 5U);
}

TEST_F(MachineTest, LostPortLosesTheBytesOfBothDirections) {
    Machine machine(still());
    const Bytes write = writeFrame(master, Installation::address(master, 16), 2, 77);
    machine.send(0, write);
    machine.advance(2 * byteTime);
    EXPECT_TRUE(machine.portOpen());
    machine.portLost();
    EXPECT_FALSE(machine.portOpen());
    machine.send(10 * millisecond, write);
    EXPECT_TRUE(machine.takeOutput(second).empty());
    EXPECT_NE(machine.value(master, 16), 77U);
    machine.portBack();
    Pc pc(machine);
    pc.now = 2 * second;
    EXPECT_TRUE(pc.write(master, 16, 78));
    EXPECT_EQ(machine.value(master, 16), 78U);
}

TEST_F(MachineTest, ReportsEveryExchange) {
    Machine machine(still());
    std::vector<Exchange> seen;
    machine.onExchange = [&](const Exchange& e) { seen.push_back(e); };
    Pc pc(machine);
    pc.write(sector, 51, 12);
    pc.readIdentity(hotDrink, 17);
    pc.exchange({0x01, 0x34, 0x12, 0x00, 0x48});
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[0].parameter, 51);
    EXPECT_EQ(seen[0].value, 12U);
    EXPECT_TRUE(seen[0].request.write);
    EXPECT_EQ(seen[0].request.board, sector);
    EXPECT_EQ(seen[1].identity, 17);
    EXPECT_EQ(seen[1].reply.size(), 2U);
    EXPECT_EQ(seen[2].note, "bad checksum");
    for (const char* part : {"sector", "write", "51 ", "= 12", "0C"}) {
        EXPECT_NE(describe(seen[0]).find(part), std::string::npos) << describe(seen[0]);
    }
}

}  // namespace
}  // namespace kestrel::simulator::tests

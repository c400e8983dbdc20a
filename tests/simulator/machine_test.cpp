// The machine as the PC meets it: frames, times, identities, the clock, and faults by hand.
// A mistake here would make the program's own tests pass against a machine that no board resembles.
#include "simulator/machine.h"

#include <functional>
#include <stdexcept>

#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

using MachineTest = SimulatorTest;

// Frames worked out by hand: what the PC sends and what must come back, to the byte.
TEST_F(MachineTest, AnswersKnownFramesByteForByte) {
    writeParameters("W0256AP03.inx", {{0x001234, 2, 1000}, {0x00ABCD, 4, 0xFFFFFFFF}});
    writeParameters("W0292AP07.inx", {{0x001234, 2, 1000}});
    writeParameters("W0245AB04.inx", {{0x001234, 1, 7}});
    Bench bench(options);
    // The state laid over the preload (presence words stand in parameters 1 and 2) is no part of this test.
    bench.setValue(Master, 1, 1000);
    bench.setValue(Master, 2, 0xFFFFFFFF);
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
        {"nothing at all", {}, {}},
    };
    for (const auto& c : cases) EXPECT_EQ(hexOf(bench.exchange(c.request)), hexOf(c.reply)) << c.what;
}

TEST_F(MachineTest, IdentityFollowsFromTheLastFileOfTheBoard) {
    for (const char* other : {"W0256AP02.inx", "W0256AO99.inx", "W0299AP09.inx"}) writeParameters(other, {});
    Bench(options).play("i0.17?3 i0.11?15 i0.12?18 i0.13?0 i0.14?1 i0.18?27 i2.11?1 i2.13?245 i1.17?7");
}

// One damage upon the other; the boards are set up in their order, so that each hides those before it.
TEST_F(MachineTest, RefusesInstallationsThatItCannotServe) {
    const auto& directory = options.directory;
    const std::vector<Entry> tooWide{{1, 16, 0}};
    const struct {
        std::function<void()> damage;
        std::string named;
    } cases[] = {{[&] { std::filesystem::remove(directory / "W0245AB04.inx"); }, "W0245A"},
                 {[&] { std::filesystem::remove(directory / "W0292.inx"); }, "W0292.inx"},
                 {[&] { writeParameters("W0256AP03.inx", tooWide); }, "W0256AP03.inx: record 1"},
                 {[&] { std::filesystem::remove_all(directory); }, "cannot be listed"}};
    for (const auto& c : cases) {
        c.damage();
        const std::string said = refusalOf<std::runtime_error>([&] { const Machine machine(options); });
        EXPECT_TRUE(contains(said, c.named)) << said;
    }
}

TEST_F(MachineTest, ClockRunsOverTheEndsOfTheCalendarAndTakesNothingThatNoClockShows) {
    // Set by hour, minute, day, month, year; shown by minute, hour, day, month, year.
    for (const char* steps :
         {"0.239=10 0.240=58 0.241=14 0.242=5 0.243=24 +60 0.244?59 0.245?10 0.246?14 0.247?5 0.248?24",
          "0.239=10 0.240=59 0.241=14 0.242=5 0.243=24 +60 0.244?0 0.245?11 0.246?14 0.247?5 0.248?24",
          "0.239=23 0.240=59 0.241=28 0.242=2 0.243=23 +60 0.244?0 0.245?0 0.246?1 0.247?3 0.248?23",
          "0.239=23 0.240=59 0.241=28 0.242=2 0.243=24 +60 0.244?0 0.245?0 0.246?29 0.247?2 0.248?24",
          "0.239=23 0.240=59 0.241=30 0.242=4 0.243=24 +60 0.244?0 0.245?0 0.246?1 0.247?5 0.248?24",
          "0.239=23 0.240=59 0.241=31 0.242=12 0.243=24 +60 0.244?0 0.245?0 0.246?1 0.247?1 0.248?25",
          "0.239=23 0.240=59 0.241=31 0.242=12 0.243=99 +60 0.244?0 0.245?0 0.246?1 0.247?1 0.248?0",
          // What no clock shows is ignored, and setting the minute starts it anew.
          "0.239=24 0.240=60 0.241=0 0.242=13 0.243=100 0.245?10 0.244?30 0.246?14 0.247?5 0.248?24",
          "+50 0.240=40 +50 0.244?40 +10 0.244?41"})
        Bench(options).play(steps);
}

TEST_F(MachineTest, RestartCutsTheReplyAndTheBoardComesBack) {
    for (const Board asked : {Master, Sector}) {
        Bench bench(options);
        const Bytes read = readFrame(asked, asked == Master ? 159 : 289);
        bench.send(0, read);
        bench.now = 7 * 521 + 1000;
        bench.advance(bench.now);
        bench.boardReset(Master);
        EXPECT_TRUE(bench.exchange({}, 100 * millisecond).empty()) << "not begun";
        EXPECT_TRUE(bench.exchange(read).empty()) << "away";
        bench.wait(second);
        bench.send(bench.now, read);
        while (!bench.nextOutput()) bench.advance(*bench.nextEvent());
        bench.now = *bench.nextOutput();
        EXPECT_EQ(bench.takeOutput(bench.now).size(), 1U);
        bench.boardReset(Master);
        EXPECT_TRUE(bench.exchange({}, 100 * millisecond).empty()) << "in the middle";
        bench.wait(2 * second);
        EXPECT_EQ(bench.exchange(read).size(), asked == Master ? 5U : 2U);
    }
}

}  // namespace
}  // namespace kestrel::simulator::tests

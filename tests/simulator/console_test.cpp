// The board program's two languages: its command line, and the orders to the running machine.
// A script that misspells something must be told so, and must not change the machine.
#include <gtest/gtest.h>

#include <stdexcept>

#include "simulator/board_options.h"
#include "simulator/commands.h"
#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

TEST(BoardOptionsTest, TakesAllOptions) {
    const BoardOptions options =
        parseBoardOptions({"--directory", "/some/where", "--seed", "18446744073709551615", "--fault", "late=0.5",
                           "--link", "/tmp/x", "--no-hot-drink", "--no-sector", "--still", "--quiet"});
    EXPECT_EQ(options.machine.directory, "/some/where");
    EXPECT_EQ(options.machine.seed, 18446744073709551615ULL);
    EXPECT_DOUBLE_EQ(options.machine.faults.rate(FaultKind::Late), 0.5);
    EXPECT_EQ(options.link, "/tmp/x");
    EXPECT_FALSE(options.machine.hotDrinkBoard || options.machine.sectorBoard || options.machine.moving);
    EXPECT_TRUE(options.quiet);
    EXPECT_FALSE(options.help || options.version);
}

TEST(BoardOptionsTest, SaysWhatIsWrong) {
    const struct {
        std::vector<std::string> arguments;
        const char* named;
    } cases[] = {{{"--sead", "1"}, "--sead"},
                 {{"--seed"}, "--seed"},
                 {{"--seed", "-1"}, "-1"},
                 {{"--seed", "1.5"}, "1.5"},
                 {{"--fault", "x=1"}, "\"x\""},
                 {{"--link"}, "--link"},
                 {{"--quiet", "board"}, "\"board\""},
                 {{""}, "\"\""}};
    for (const auto& c : cases) {
        try {
            parseBoardOptions(c.arguments);
            ADD_FAILURE() << c.named;
        } catch (const std::invalid_argument& error) {
            EXPECT_NE(std::string(error.what()).find(c.named), std::string::npos) << error.what();
            EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
        }
    }
}

class CommandsTest : public testing::Test {
  protected:
    Installation installation;
    Machine machine{installation.options()};
};

TEST_F(CommandsTest, SetsAndGetsByNumberOrName) {
    EXPECT_EQ(runCommand(machine, "set 2 51 12"), "");
    EXPECT_EQ(runCommand(machine, "get sector 51"), "2 51 12");
    EXPECT_EQ(runCommand(machine, "  set   hot-drink 1204 65535 "), "");
    EXPECT_EQ(runCommand(machine, "get 1 1204"), "1 1204 65535");
    EXPECT_EQ(runCommand(machine, "set master 356 4294967295"), "");
    EXPECT_EQ(runCommand(machine, "get 0 356"), "0 356 4294967295");
    EXPECT_EQ(runCommand(machine, ""), "");
}

TEST_F(CommandsTest, ActsOnPortBoardsAndFaults) {
    runCommand(machine, "unplug");
    EXPECT_FALSE(machine.portOpen());
    runCommand(machine, "plug");
    EXPECT_TRUE(machine.portOpen());
    Pc pc(machine);
    const Bytes probe{0, 0, 0, 0, 0};
    runCommand(machine, "silent master on");
    EXPECT_TRUE(pc.exchange(probe).empty());
    runCommand(machine, "silent 0 off");
    EXPECT_EQ(pc.exchange(probe).size(), 2U);
    runCommand(machine, "fault drop=1");
    EXPECT_EQ(pc.exchange(probe).size(), 1U);
    runCommand(machine, "fault");
    EXPECT_EQ(pc.exchange(probe).size(), 2U);
}

TEST_F(CommandsTest, SaysWhatIsWrong) {
    const struct {
        const char* line;
        const char* named;
    } cases[] = {{"sett 0 1 1", "sett"},
                 {"set 0 1", "usage: set"},
                 {"set 3 1 1", "\"3\""},
                 {"set 0 x 1", "\"x\""},
                 {"set 0 1 4294967296", "4294967296"},
                 {"get 0 9999", "9999"},
                 {"get 0 0", "0"},
                 {"silent 0 maybe", "maybe"},
                 {"fault drop", "NAME=RATE"},
                 {"unplug now", "usage: unplug"},
                 {"set 0 1 -1", "-1"}};
    for (const auto& c : cases) {
        try {
            runCommand(machine, c.line);
            ADD_FAILURE() << c.line;
        } catch (const std::invalid_argument& error) {
            EXPECT_NE(std::string(error.what()).find(c.named), std::string::npos) << error.what();
        }
    }
}

}  // namespace
}  // namespace kestrel::simulator::tests

// The board program's two languages: its command line, and the orders to the running machine.
// A script that misspells something must be told so, and must not change the machine.
#include <stdexcept>

#include "simulator/board_options.h"
#include "simulator/commands.h"
#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

TEST(BoardOptionsTest, TakesAllOptions) {
    const BoardOptions options = parseBoardOptions({"--directory", "/some/where", "--seed", "18446744073709551615",
                                                    "--fault", "late=0.5", "--link", "/tmp/x", "--latency", "1000",
                                                    "--no-hot-drink", "--no-sector", "--still", "--quiet"});
    EXPECT_EQ(options.machine.directory, "/some/where");
    EXPECT_EQ(options.machine.seed, 18446744073709551615ULL);
    EXPECT_DOUBLE_EQ(options.machine.faults.rate(FaultKind::Late), 0.5);
    EXPECT_EQ(options.machine.latency, second);
    EXPECT_EQ(options.link, "/tmp/x");
    EXPECT_FALSE(options.machine.hotDrinkBoard || options.machine.sectorBoard || options.machine.moving);
    EXPECT_TRUE(options.quiet);
    EXPECT_FALSE(options.help || options.version);
}

TEST(BoardOptionsTest, SaysWhatIsWrongInOneLine) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {{{"--sead", "1"}, "--sead"},
                                                                      {{"--seed"}, "--seed"},
                                                                      {{"--seed", "-1"}, "-1"},
                                                                      {{"--seed", "1.5"}, "1.5"},
                                                                      {{"--fault", "x=1"}, "\"x\""},
                                                                      {{"--link"}, "--link"},
                                                                      {{"--latency", "1001"}, "1001"},
                                                                      {{"--latency", "-1"}, "-1"},
                                                                      {{"--quiet", "board"}, "\"board\""},
                                                                      {{""}, "\"\""}};
    for (const auto& [arguments, named] : cases) {
        const std::string said = refusalOf<BadOption>([&, a = arguments] { parseBoardOptions(a); });
        EXPECT_TRUE(contains(said, named) && !contains(said, "\n")) << named << ": " << said;
    }
}

class CommandsTest : public SimulatorTest {
  protected:
    Bench bench{options};
};

TEST_F(CommandsTest, SetsAndGetsByNumberOrName) {
    const std::pair<const char*, const char*> cases[] = {{"set 2 51 12", ""},
                                                         {"get sector 51", "2 51 12"},
                                                         {"", ""},
                                                         {"  set   hot-drink 1204 65535 ", ""},
                                                         {"get 1 1204", "1 1204 65535"},
                                                         {"set master 356 4294967295", ""},
                                                         {"get 0 356", "0 356 4294967295"}};
    for (const auto& [order, answer] : cases) EXPECT_EQ(runCommand(bench, order), answer) << order;
}

TEST_F(CommandsTest, ActsOnPortBoardsAndFaults) {
    const struct {
        const char* order;
        bool portOpen;
        std::size_t reply;  // bytes, to the frame by which a PC looks for the machine
    } cases[] = {{"unplug", false, 0},      {"plug", true, 2},         {"silent master on", true, 0},
                 {"silent 0 off", true, 2}, {"fault drop=1", true, 1}, {"fault", true, 2},
                 {"strike port", false, 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(runCommand(bench, c.order), "");
        EXPECT_EQ(bench.portOpen(), c.portOpen) << c.order;
        EXPECT_EQ(bench.exchange({0, 0, 0, 0, 0}).size(), c.reply) << c.order;
    }
}

TEST_F(CommandsTest, SaysWhatIsWrong) {
    const std::pair<const char*, const char*> cases[] = {{"sett 0 1 1", "sett"},
                                                         {"set 0 1", "usage: set"},
                                                         {"set 3 1 1", "\"3\""},
                                                         {"set 0 x 1", "\"x\""},
                                                         {"set 0 1 4294967296", "4294967296"},
                                                         {"get 0 9999", "9999"},
                                                         {"get 0 0", "0"},
                                                         {"silent 0 maybe", "maybe"},
                                                         {"fault drop", "NAME=RATE"},
                                                         {"strike drop", "\"drop\""},
                                                         {"strike it", "\"it\""},
                                                         {"unplug now", "usage: unplug"},
                                                         {"set 0 1 -1", "-1"}};
    for (const auto& [order, named] : cases) {
        const std::string said = refusalOf<std::invalid_argument>([&, o = order] { runCommand(bench, o); });
        EXPECT_TRUE(contains(said, named)) << order << ": " << said;
    }
}

}  // namespace
}  // namespace kestrel::simulator::tests

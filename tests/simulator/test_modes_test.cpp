// The test modes of the two boards behind the master, driven over the line as the program drives them.
// If these were wrong, the program's in/out page could not be tried without a machine.
#include <gtest/gtest.h>

#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

constexpr auto hotDrink = Board::HotDrink;
constexpr auto sector = Board::Sector;

class TestModesTest : public testing::Test {
  protected:
    static MachineOptions still(const Installation& installation) {
        MachineOptions options = installation.options();
        options.moving = false;
        return options;
    }
    void startHotDrink(std::uint32_t seconds) {
        pc.write(hotDrink, 2, seconds);
        pc.write(hotDrink, 1, 1);
    }
    void startSector(std::uint32_t seconds) {
        pc.write(sector, 285, seconds);
        pc.write(sector, 284, 1);
    }
    void sectorOutput(std::uint32_t group, std::uint32_t bit) {
        pc.write(sector, 285, group);
        pc.write(sector, 286, bit);
        pc.write(sector, 284, 2);
    }
    bool hotDrinkInTest() { return (pc.read(hotDrink, 1297) & 1) != 0; }
    bool sectorInTest() { return (pc.read(sector, 290) & 1) != 0; }

    Installation installation;
    Machine machine{still(installation)};
    Pc pc{machine};
};

TEST_F(TestModesTest, EveryOrderStartsTheTimeAnew) {
    startHotDrink(60);
    startSector(60);
    for (int i = 0; i < 3; ++i) {
        pc.wait(40 * second);
        pc.write(hotDrink, 1, 2);
        startSector(60);
    }
    EXPECT_TRUE(hotDrinkInTest());
    EXPECT_TRUE(sectorInTest());
}

TEST_F(TestModesTest, StopsOnTimeZeroAndStaysStopped) {
    startHotDrink(60);
    pc.wait(30 * second);
    startHotDrink(0);
    EXPECT_FALSE(hotDrinkInTest());
    pc.wait(10 * second);
    startHotDrink(60);
    pc.wait(25 * second);
    EXPECT_TRUE(hotDrinkInTest()) << "the end of the first test must not end the second";
}

TEST_F(TestModesTest, OutputsMoveOnlyInTestModeAndOnlyOnCommand) {
    pc.write(hotDrink, 3, 0x55);
    pc.write(hotDrink, 1, 2);
    sectorOutput(0x01, 0x01);
    EXPECT_EQ(pc.read(hotDrink, 1293), 0U);
    EXPECT_EQ(pc.read(sector, 288), 0U);
    startHotDrink(60);
    const std::array<std::uint32_t, 5> image{0x01, 0x80, 0xFF, 0x00, 0x10};
    for (int i = 0; i < 5; ++i) pc.write(hotDrink, 2 + i, image[static_cast<std::size_t>(i)]);
    EXPECT_EQ(pc.read(hotDrink, 1292), 0U);
    pc.write(hotDrink, 1, 2);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(pc.read(hotDrink, 1292 + i), image[static_cast<std::size_t>(i)]);
}

TEST_F(TestModesTest, SectorBoardDrivesOneOutputAndTheCompressor) {
    startSector(60);
    const struct {
        const char* what;
        std::uint32_t group, bit, groupEcho, bitEcho;
    } cases[] = {
        {"one output", 0x04, 0x20, 0x04, 0x20},          {"another one", 0x20, 0x80, 0x20, 0x80},
        {"with the compressor", 0x81, 0x01, 0x81, 0x01}, {"the compressor alone", 0x80, 0x00, 0x80, 0x00},
        {"two groups at once", 0x0C, 0x02, 0x04, 0x02},  {"two bits at once", 0x01, 0x90, 0x01, 0x10},
        {"no such group", 0x40, 0x01, 0x00, 0x00},       {"off", 0x00, 0x00, 0x00, 0x00},
    };
    for (const auto& c : cases) {
        sectorOutput(c.group, c.bit);
        EXPECT_EQ(pc.read(sector, 288), c.groupEcho) << c.what;
        EXPECT_EQ(pc.read(sector, 289), c.bitEcho) << c.what;
    }
}

TEST_F(TestModesTest, RestartEndsTheTestOfThatBoard) {
    startHotDrink(60);
    startSector(60);
    pc.write(sector, 284, 3);
    machine.boardReset(sector);
    pc.wait(2 * second);
    EXPECT_EQ(pc.read(sector, 290), 0U);
    EXPECT_EQ(pc.read(sector, 285), 0U);
    EXPECT_TRUE(hotDrinkInTest());
    machine.boardReset(hotDrink);
    pc.wait(2 * second);
    EXPECT_FALSE(hotDrinkInTest());
}

}  // namespace
}  // namespace kestrel::simulator::tests

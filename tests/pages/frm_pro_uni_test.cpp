// The page of unique products: what opens for which board, what each control writes, and how the delays' switch works.
// Most of it on the simulated machine; what depends on the order of values is told to the page directly.
#include "pages/beverage/frm_pro_uni.h"

#include <gtest/gtest.h>

#include "support/arrivals.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::Bench;
using testing::tell;
using testing::World;
using testing::Writes;
using testing::writesOf;

constexpr int OldRevision = 26;
constexpr int NewRevision = 27;

simulator::MachineOptions withRevision(int revision) {
    auto options = World::still();
    options.identities[0].revision = revision;
    return options;
}

/// A letter for each product: "-" locked, "c" channel alone, "t" time too, "d" delay too.
std::string openParts(FrmProUni& page) {
    std::string parts;
    const auto part = [&](Label& name, SliderSwitch& channel, auto& captions, auto& bars, auto& values) {
        const auto row = [&](int i) { return captions[i].Enabled + bars[i].Enabled + values[i].Enabled; };
        const int live = 100 * (name.Enabled + channel.Enabled) + 10 * row(0) + row(1);
        parts += live == 0 ? '-' : live == 200 ? 'c' : live == 230 ? 't' : live == 233 ? 'd' : '?';
    };
    part(page.Label1x, page.iSwSliderX1, page.Label1s, page.HScroll1, page.Label1);
    part(page.Label2x, page.iSwSliderX2, page.Label2s, page.HScroll2, page.Label2);
    part(page.Label3x, page.iSwSliderX3, page.Label3s, page.HScroll3, page.Label3);
    return parts;
}

void setChannels(World& world, std::uint32_t first, std::uint32_t second, std::uint32_t third) {
    world.setBoard(1, 1394, first);
    world.setBoard(1, 1395, second);
    world.setBoard(1, 1396, third);
}

TEST(FrmProUni, OpensTimesOfTakenChannelsAndDelaysOnOlderBoardsAlone) {
    struct Case {
        int revision;
        std::uint32_t channels[3];
        const char* parts;
    };
    const Case cases[] = {{OldRevision, {1, 0, 5}, "dcd"},
                          {NewRevision, {1, 0, 5}, "tct"},
                          {OldRevision, {0, 2, 0}, "cdc"},
                          {NewRevision, {3, 3, 3}, "ttt"}};
    for (const Case& each : cases) {
        World world(withRevision(each.revision));
        world.start();
        setChannels(world, each.channels[0], each.channels[1], each.channels[2]);
        auto& page = world.open<FrmProUni>("FrmProUni");
        EXPECT_EQ(openParts(page), each.parts) << each.revision;
        EXPECT_EQ(page.iSwSliderX1.PositionLabels.get(), "0,1,2,3,4,5");
        EXPECT_TRUE(page.swslResto.Enabled);
    }
}

TEST(FrmProUni, EachBarWritesItsTimeAndTheShadow) {
    World world(withRevision(OldRevision));
    world.start();
    setChannels(world, 1, 2, 3);
    auto& page = world.open<FrmProUni>("FrmProUni");
    ControlArray<ScrollBar, 2>* bars[] = {&page.HScroll1, &page.HScroll2, &page.HScroll3};
    for (int i = 0; i < 3; ++i) {
        const auto move = [&] {
            (*bars[i])[0].UserMove(30 + i);
            (*bars[i])[1].UserMove(40 + i);
        };
        const auto k = static_cast<std::uint32_t>(i);
        const Writes expected = {
            {1, 1397 + i, 30 + k}, {1, 1400 + i, 40 + k}, {1, 1406 + i, 30 + k}, {1, 1409 + i, 40 + k}};
        EXPECT_EQ(writesOf(world, move), expected) << i;
    }
    EXPECT_EQ(page.Label3[0].Caption.get(), "3.2");
    EXPECT_EQ(page.Label3[1].Caption.get(), "4.2");
    EXPECT_EQ(page.Label3x.Caption.get(), "prodotto unico 3 ");
    EXPECT_EQ(page.Label3s[0].Caption.get(), "tempo unico 3 (s)");
    EXPECT_EQ(page.Label3s[1].Caption.get(), "ritardo unico 3 (s)");
    EXPECT_EQ(page.lblEnRit.Caption.get(), "abilita ritardo");
}

TEST(FrmProUni, AMovedChannelLocksEverythingUntilTheBoardHasAnswered) {
    World world(withRevision(OldRevision));
    world.start();
    setChannels(world, 1, 0, 0);
    auto& page = world.open<FrmProUni>("FrmProUni");
    const auto choose = [&] {
        page.iSwSliderX2.UserMove(4);
        EXPECT_EQ(openParts(page), "---");
        EXPECT_FALSE(page.swslResto.Enabled);
    };
    EXPECT_EQ(writesOf(world, choose), (Writes{{1, 1395, 4}, {1, 1404, 4}}));
    EXPECT_EQ(openParts(page), "ddc");
    page.iSwSliderX1.UserMove(0);
    ASSERT_TRUE(world.settle());
    EXPECT_EQ(openParts(page), "cdc");
    EXPECT_FALSE(page.iSwSliderX1.waiting());
}

TEST(FrmProUni, AChannelThatTheMachineNoLongerHasIsPulledDownOnTheBoardToo) {
    struct Case {
        std::uint32_t products;
        const char* labels;
        Writes writes;
    };
    const Case cases[] = {{3, "0,1,2,3", {{1, 1156, 3}, {1, 1394, 3}, {1, 1403, 3}}},
                          {0, "0", {{1, 1156, 0}, {1, 1394, 0}, {1, 1395, 0}, {1, 1403, 0}, {1, 1404, 0}}}};
    for (const Case& each : cases) {
        World world;
        world.start();
        setChannels(world, 5, 3, 0);
        auto& page = world.open<FrmProUni>("FrmProUni");
        const auto lower = [&] {
            CurrentBank = 1;
            ParamWrite(1156, each.products);
        };
        EXPECT_EQ(writesOf(world, lower), each.writes);
        EXPECT_EQ(page.iSwSliderX1.PositionLabels.get(), each.labels);
        EXPECT_EQ(page.iSwSliderX1.Position, static_cast<int>(each.products));
    }
}

TEST(FrmProUni, TheSwitchOfDelaysWritesTheBitIntoTheByteThatTheBoardReported) {
    World world;
    world.start();
    world.setBoard(1, 1299, 0x47);
    auto& page = world.open<FrmProUni>("FrmProUni");
    EXPECT_EQ(page.swslResto.Position, 0);
    EXPECT_EQ(writesOf(world, [&] { page.swslResto.UserMove(1); }), (Writes{{1, 1299, 0x57}, {1, 1301, 0x57}}));
    EXPECT_EQ(writesOf(world, [&] { page.swslResto.UserMove(0); }), (Writes{{1, 1299, 0x47}, {1, 1301, 0x47}}));
    EXPECT_FALSE(page.swslResto.waiting());
}

TEST(FrmProUni, ASwitchThatFollowsTheBoardWritesTheSameByteBack) {
    World world;
    world.start();
    world.setBoard(1, 1299, 0x95);
    EXPECT_EQ(writesOf(world, [&] { ShowPage("FrmProUni"); }), (Writes{{1, 1299, 0x95}, {1, 1301, 0x95}}));
    EXPECT_EQ(world.open<FrmProUni>("FrmProUni").swslResto.Position, 1);
}

TEST(FrmProUni, TheByteOfOptionsChangesOnlyWhenTheBoardReportsIt) {
    World world;
    world.start();
    auto& page = world.open<FrmProUni>("FrmProUni");
    tell(page, 1, 1299, 0x01);
    page.swslResto.UserMove(1);
    EXPECT_EQ(ParamRead(1299, 1), 0x11);
    tell(page, 1, 1299, 0x08);
    EXPECT_EQ(page.swslResto.Position, 0);
    page.swslResto.UserMove(1);
    page.swslResto.UserMove(0);
    EXPECT_EQ(ParamRead(1299, 1), 0x08) << "both moves build on the byte that was reported last";
}

TEST(FrmProUni, FollowsTheStatusAndStaysLockedWithoutIt) {
    World world;
    world.start();
    setChannels(world, 1, 0, 0);
    world.setBoard(0, 1, 0);
    auto& page = world.open<FrmProUni>("FrmProUni");
    EXPECT_EQ(openParts(page), "---");
    EXPECT_TRUE(page.swslResto.Enabled) << "the switch of delays opens with the last value of the first set";
    for (const bool ready : {true, false, true}) {
        world.setBoard(0, 1, ready ? 4 : 0xFB);
        world.run(2000);
        EXPECT_EQ(openParts(page), ready ? "tcc" : "---");
        EXPECT_EQ(page.swslResto.Enabled && page.lblEnRit.Enabled, ready);
        EXPECT_EQ(page.swslResto.Enabled, page.lblEnRit.Enabled);
    }
}

TEST(FrmProUni, CountsTenValues) {
    Bench bench;
    auto& page = bench.load<FrmProUni>();
    const int counted[] = {1156, 1394, 1395, 1396, 1397, 1398, 1399, 1400, 1401};
    for (const int n : counted) tell(page, 1, n, 5);
    for (const int uncounted : {1203, 1298, 1300, 1301, 1403}) tell(page, 1, uncounted, 5);
    EXPECT_FALSE(page.swslResto.Enabled);
    tell(page, 1, 1402, 5);
    EXPECT_TRUE(page.swslResto.Enabled);
}

}  // namespace
}  // namespace kestrel

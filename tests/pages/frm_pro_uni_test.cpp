// The page of unique products: what opens for which board, what the switches write, and how the delays' switch works.
// On the simulated machine.
#include "pages/beverage/frm_pro_uni.h"

#include <gtest/gtest.h>

#include "support/bare_mirror.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

constexpr int OldRevision = 26;
constexpr int NewRevision = 27;

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

/// The page on a master of this revision, with these channels.
struct UniqueProducts {
    explicit UniqueProducts(int revision, std::uint32_t first = 1, std::uint32_t second = 0, std::uint32_t third = 0)
        : world(of(revision), {{1, 1394, first}, {1, 1395, second}, {1, 1396, third}}) {}
    static simulator::MachineOptions of(int revision) {
        auto options = World::still();
        options.identities[0].revision = revision;
        return options;
    }
    StartedWorld world;
    FrmProUni& page = world.open<FrmProUni>("FrmProUni");
};

TEST(FrmProUni, OpensTimesOfTakenChannelsAndDelaysOnOlderBoardsAlone) {
    const struct {
        int revision;
        std::uint32_t channels[3];
        const char* parts;
    } cases[] = {{OldRevision, {1, 0, 5}, "dcd"},
                 {NewRevision, {1, 0, 5}, "tct"},
                 {OldRevision, {0, 2, 0}, "cdc"},
                 {NewRevision, {3, 3, 3}, "ttt"}};
    for (const auto& each : cases) {
        UniqueProducts unique(each.revision, each.channels[0], each.channels[1], each.channels[2]);
        EXPECT_EQ(openParts(unique.page), each.parts) << each.revision;
        EXPECT_EQ(unique.page.iSwSliderX1.PositionLabels.get(), "0,1,2,3,4,5");
        EXPECT_TRUE(unique.page.swslResto.Enabled && unique.page.lblEnRit.Enabled);
        unique.world.setBoard(0, 1, 0xFB);
        unique.world.run(2000);
        EXPECT_EQ(openParts(unique.page), "---") << each.revision;
        EXPECT_FALSE(unique.page.swslResto.Enabled || unique.page.lblEnRit.Enabled);
    }
}

TEST(FrmProUni, AMovedChannelLocksEverythingUntilTheBoardHasAnswered) {
    UniqueProducts unique(OldRevision);
    const auto choose = [&] {
        unique.page.iSwSliderX2.UserMove(4);
        EXPECT_EQ(openParts(unique.page), "---");
        CurrentBank = 0;
        unique.page.notify(1, unique.world.board(0, 1));
        EXPECT_EQ(openParts(unique.page), "---") << "the status is polled; the same again opens nothing";
        EXPECT_FALSE(unique.page.swslResto.Enabled);
    };
    EXPECT_EQ(writesOf(unique.world, choose), (Setting{1, 1395, 1404}.as(4)));
    EXPECT_EQ(openParts(unique.page), "ddc");
    expectMove(unique.world, unique.page.iSwSliderX1, 0, Setting{1, 1394, 1403}.as(0));
    EXPECT_EQ(openParts(unique.page), "cdc");
}

TEST(FrmProUni, AChannelThatTheMachineNoLongerHasIsPulledDownOnTheBoardToo) {
    const struct {
        std::uint32_t products;
        const char* labels;
        Writes writes;
    } cases[] = {{3, "0,1,2,3", {{1, 1156, 3}, {1, 1394, 3}, {1, 1403, 3}}},
                 {0, "0", {{1, 1156, 0}, {1, 1394, 0}, {1, 1395, 0}, {1, 1403, 0}, {1, 1404, 0}}}};
    for (const auto& each : cases) {
        UniqueProducts unique(NewRevision, 5, 3, 0);
        const auto lower = [&] {
            CurrentBank = 1;
            ParamWrite(1156, each.products);
        };
        EXPECT_EQ(writesOf(unique.world, lower), each.writes);
        EXPECT_EQ(unique.page.iSwSliderX1.PositionLabels.get(), each.labels);
        EXPECT_EQ(unique.page.iSwSliderX1.Position, static_cast<int>(each.products));
    }
}

TEST(FrmProUni, TheSwitchOfDelaysWritesAlsoWhenItFollowsTheBoard) {
    StartedWorld world({{1, 1299, 0x57}});
    EXPECT_EQ(writesOf(world, [&] { ShowPage("FrmProUni"); }), (Setting{1, 1299, 1301}.as(0x57)));
}

TEST(FrmProUni, TheByteOfOptionsChangesOnlyWhenTheBoardReportsIt) {
    BareMirror mirror;
    auto& page = mirror.load<FrmProUni>();
    mirror.arrive(0, 1, 4);
    mirror.arrive(1, 1299, 0x01);
    page.swslResto.UserMove(1);
    EXPECT_EQ(ParamRead(1299, 1), 0x11);
    mirror.arrive(1, 1299, 0x08);
    EXPECT_EQ(page.swslResto.Position, 0);
    page.swslResto.UserMove(1);
    page.swslResto.UserMove(0);
    EXPECT_EQ(ParamRead(1299, 1), 0x08) << "both moves build on the byte that was reported last";
}

TEST(FrmProUni, WithoutAReadyBoardOnlyTheSwitchOfDelaysOpens) {
    StartedWorld world({{0, 1, 0}});
    auto& page = world.open<FrmProUni>("FrmProUni");
    EXPECT_EQ(openParts(page), "---");
    EXPECT_TRUE(page.swslResto.Enabled);
}

}  // namespace
}  // namespace kestrel::testing

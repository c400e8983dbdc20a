// The page of unique products: what opens for which board, what the switches write, and how the delays' switch works.
// On the simulated machine.
#include "pages/beverage/frm_pro_uni.h"

#include <gtest/gtest.h>

#include "support/bare_mirror.h"
#include "support/layouts.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

constexpr int OldRevision = 26;
constexpr int NewRevision = 27;

/// What is not greyed beside the frames: two controls for each product, three for its time, three for its delay, and
/// two for the switch of delays.
int live(FrmProUni& page) {
    constexpr int Frames = 4;
    return liveControls(page.Arrange()) - Frames;
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
        int live;
    } cases[] = {{OldRevision, {1, 0, 5}, 6 + 12 + 2},
                 {NewRevision, {1, 0, 5}, 6 + 6 + 2},
                 {OldRevision, {0, 2, 0}, 6 + 6 + 2},
                 {NewRevision, {3, 3, 3}, 6 + 9 + 2}};
    for (const auto& each : cases) {
        UniqueProducts unique(each.revision, each.channels[0], each.channels[1], each.channels[2]);
        EXPECT_EQ(live(unique.page), each.live) << each.revision;
        EXPECT_EQ(unique.page.iSwSliderX1.PositionLabels.get(), "0,1,2,3,4,5");
        unique.world.setBoard(0, 1, 0xFB);
        unique.world.run(2000);
        EXPECT_EQ(live(unique.page), 0) << each.revision;
    }
}

TEST(FrmProUni, AMovedChannelLocksEverythingUntilTheBoardHasAnswered) {
    UniqueProducts unique(OldRevision);
    const auto choose = [&] {
        unique.page.iSwSliderX2.UserMove(4);
        EXPECT_EQ(live(unique.page), 0);
        CurrentBank = 0;
        unique.page.notify(1, unique.world.board(0, 1));
        EXPECT_EQ(live(unique.page), 0) << "the status is polled; the same again opens nothing";
    };
    EXPECT_EQ(writesOf(unique.world, choose), (Setting{1, 1395, 1404}.as(4)));
    EXPECT_EQ(live(unique.page), 6 + 12 + 2);
    expectMove(unique.world, unique.page.iSwSliderX1, 0, Setting{1, 1394, 1403}.as(0));
    EXPECT_EQ(live(unique.page), 6 + 6 + 2);
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

}  // namespace
}  // namespace kestrel::testing

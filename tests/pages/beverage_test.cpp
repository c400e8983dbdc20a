// What beverages are made of, but for their doses: powders, preselections, unique products, bits of recipes.
// A lock that is missing here changes a recipe that nobody touched.
#include <gtest/gtest.h>

#include "language/language_files.h"
#include "pages/beverage/frm_inter.h"
#include "pages/beverage/frm_presel.h"
#include "pages/beverage/frm_pro_uni.h"
#include "pages/beverage/recipe.h"
#include "support/bare_mirror.h"
#include "support/layouts.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

TEST(FrmInter, OpensAsManyRowsAsTheMachineHasPowdersWhileTheBoardIsReady) {
    const std::pair<std::uint32_t, int> cases[] = {{0, 0}, {1, 1}, {3, 3}, {5, 5}, {7, 5}};
    for (const auto& [powders, rows] : cases) {
        constexpr int Heads = 7, OfARow = 6;
        StartedWorld world({{1, 1156, powders}});
        auto& page = world.open<FrmInter>("FrmInter");
        EXPECT_EQ(liveControls(page.Arrange()), Heads + OfARow * rows) << powders;
        page.Form_Activate();
        EXPECT_EQ(liveControls(page.Arrange()), Heads + OfARow * rows) << powders << " again in front";
        world.setBoard(0, 1, 0xF0);
        world.run(2000);
        EXPECT_EQ(liveControls(page.Arrange()), Heads) << powders;
        page.Form_Activate();
        EXPECT_EQ(liveControls(page.Arrange()), Heads) << powders << " in front without its board";
    }
}

TEST(FrmInter, SwitchesMovedBeforeTheBoardAnswersBuildOnOneAnotherAndLockedRowsShowTheirs) {
    StartedWorld world({{1, 1156, 4}, {1, 1380, 0b10100}});
    auto& page = world.open<FrmInter>("FrmInter");
    for (int i = 0; i < 5; ++i) EXPECT_EQ(page.iSwSliderX1[i].Position, i == 2 || i == 4 ? 1 : 0) << i;
    const auto move = [&] {
        page.iSwSliderX1[0].UserMove(1);
        page.iSwSliderX1[2].UserMove(0);
        page.iSwSliderX1[3].UserMove(1);
        page.iSwSliderX1[4].UserMove(0);  // locked
    };
    EXPECT_EQ(writesOf(world, move), (Setting{1, 1380, 1392}.as(0b11001)));
    for (const SliderSwitch& slider : page.iSwSliderX1) EXPECT_FALSE(slider.waiting());
}

TEST(FrmPresel, PositionsAreNamedOnceTheProductsAreKnown) {
    {
        BareMirror mirror;
        auto& loading = mirror.load<FrmPresel>();
        loading.Form_Activate();
        EXPECT_EQ(loading.iSwSliderX1[0].PositionLabels.get(), "0,1,2,3,4,5") << "as it was drawn";
    }
    const std::pair<std::uint32_t, const char*> cases[] = {{0, "no"}, {1, "no,1"}, {5, "no,1,2,3,4,5"}};
    for (const auto& [products, labels] : cases) {
        StartedWorld world({{1, 1156, products}});
        auto& page = world.open<FrmPresel>("FrmPresel");
        EXPECT_EQ(page.iSwSliderX1[3].PositionLabels.get(), labels);
        EXPECT_EQ(page.iSwSliderX2[0].labels().size(), 6U);
        EXPECT_EQ(page.iSwSliderX2[0].labels()[5], LanguageTable(92));
    }
}

TEST(FrmPresel, ATypeBeyondTheLastShowsTheLastAndIsLeftOnTheBoard) {
    StartedWorld world({{1, 1418, 7}});
    EXPECT_EQ(writesOf(world, [&] { ShowPage("FrmPresel"); }), Writes());
    EXPECT_EQ(world.open<FrmPresel>("FrmPresel").iSwSliderX2[2].Position, 5);
}

TEST(FrmPresel, AProductThatTheMachineNoLongerHasIsPulledDownOnTheBoardToo) {
    StartedWorld world({{1, 1412, 5}, {1, 1413, 2}, {1, 1414, 3}, {1, 1415, 0}});
    auto& page = world.open<FrmPresel>("FrmPresel");
    const auto lower = [] {
        CurrentBank = 1;
        ParamWrite(1156, 2);
    };
    const Writes expected = {{1, 1156, 2}, {1, 1412, 2}, {1, 1414, 2}, {1, 1424, 2}, {1, 1426, 2}};
    EXPECT_EQ(writesOf(world, lower), expected);
    EXPECT_EQ(page.iSwSliderX1[0].Position, 2);
    EXPECT_EQ(page.iSwSliderX1[1].Position, 2);
    EXPECT_EQ(page.iSwSliderX1[0].top(), 2);
}

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

TEST(SelectionMasks, AChangeKeepsTheOtherBitsAndTheLastTwoSelectionsAreChangedInOneMaskAlone) {
    struct {
        Mask mask;
        int first, shadow, lastSelection;
    } const masks[] = {{IncludedMask, 1071, 1075, 29}, {CupMask, 1063, 1067, 29},   {JugMask, 1087, 1091, 29},
                       {Step2Mask, 1127, 1135, 29},    {Step3Mask, 1131, 1139, 29}, {ColdMask, 1079, 1083, 29},
                       {FreeMask, 1455, 1459, 31}};
    struct {
        int selection, byte;
        unsigned before;
        bool on;
        unsigned after;
    } const changes[] = {{0, 0, 0x00, true, 0x01},   {7, 0, 0xFF, false, 0x7F}, {8, 1, 0x80, true, 0x81},
                         {17, 2, 0xFF, false, 0xFD}, {29, 3, 0x04, true, 0x24}, {30, 3, 0x80, true, 0xC0},
                         {31, 3, 0xFF, false, 0x7F}};
    for (const auto& row : masks) {
        BareMirror mirror;
        for (const auto& change : changes) {
            SelectionMasks bytes;
            for (const int n : {row.first + change.byte, row.shadow + change.byte}) ParamFlags(1, n) = 0;
            const auto place = SelectionMasks::placeOf(row.first + change.byte);
            ASSERT_TRUE(place && place->mask == row.mask && place->holds(change.selection));
            bytes.store(*place, change.before);
            bytes.change(row.mask, change.selection, change.on);
            const bool taken = change.selection <= row.lastSelection;
            EXPECT_EQ(bytes.bit(row.mask, change.selection), change.on == taken);
            for (const int n : {row.first + change.byte, row.shadow + change.byte}) {
                EXPECT_EQ((ParamFlags(1, n) & flag::WriteDue) != 0, taken) << n;
                EXPECT_TRUE(!taken || ParamRead(n, 1) == change.after) << n;
            }
        }
    }
    for (const int n : {1067, 1075, 1083, 1091, 1094, 1095, 1126, 1135, 1142, 1454, 1459})
        EXPECT_FALSE(SelectionMasks::placeOf(n)) << n << " is a shadow or no mask at all";
}

}  // namespace
}  // namespace kestrel::testing

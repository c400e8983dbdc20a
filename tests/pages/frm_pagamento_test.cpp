// The page of the payment system: which frames the master's choice opens, what each switch writes, and the list of
// released parameters, which is not that of the watched ones.
#include "pages/payment/frm_pagamento.h"

#include <gtest/gtest.h>

#include "link/identification.h"
#include "support/bare_mirror.h"
#include "support/layouts.h"
#include "support/watches.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

TEST(FrmPagamento, FramesFollowThePaymentSystem) {
    const struct {
        std::uint32_t parameter85;
        int usable, live;  ///< controls that a user can work, and all that is not greyed
        int executive;     ///< position of SliderX5
    } cases[] = {{0, 1, 5, 0},       {1, 8, 26, 0},  {2, 2, 5, 0},        {3, 2, 5, 0},        {4, 15, 41, 0},
                 {5, 15, 41, 0},     {6, 15, 41, 0}, {7, 15, 41, 0},      {2 + 64, 3, 8, 1},   {2 + 128, 3, 8, 2},
                 {2 + 192, 3, 8, 1}, {64, 1, 5, 1},  {1 + 128, 8, 26, 2}, {4 + 64, 15, 41, 1}, {2, 2, 5, 0}};
    BareMirror mirror;
    SetBoardRevision(24);
    auto& page = mirror.load<FrmPagamento>();
    for (const int n : {3, 312, 318, 328, 330, 332, 334, 336, 342, 344, 346, 348, 84}) mirror.arrive(0, n, 1);
    for (const auto& c : cases) {
        mirror.arrive(0, 85, c.parameter85);
        EXPECT_EQ(usableInputs(page.Arrange()), c.usable) << c.parameter85;
        EXPECT_EQ(liveControls(page.Arrange()), c.live) << c.parameter85;
        EXPECT_EQ(page.SliderX5.Position, c.executive) << c.parameter85;
        const FoldingFrame& inUse = (c.parameter85 & 4) != 0   ? page.Frame2
                                    : (c.parameter85 & 2) != 0 ? page.Frame4
                                                               : page.Frame1;
        for (FoldingFrame* frame : {&page.Frame1, &page.Frame2, &page.Frame4}) {
            EXPECT_EQ(frame->Folded, frame != &inUse) << c.parameter85;
            frame->UserFold();
            mirror.arrive(0, 85, c.parameter85);
            EXPECT_EQ(frame->Folded, frame == &inUse) << "the user's choice stands until the system changes";
            frame->UserFold();
        }
        EXPECT_EQ(page.HScroll10[6].usable(), c.usable == 1 || c.usable == 8) << "coin 7 needs no system";
    }
    mirror.arrive(1, 85, 4);
    EXPECT_EQ(usableInputs(page.Arrange()), 2) << "another board's parameter";
}

TEST(FrmPagamento, BoardsUpToRevision23LeaveTheCreditRowsAsTheyWere) {
    for (const int revision : {0, 23, 24, 255}) {
        BareMirror mirror;
        SetBoardRevision(revision);
        auto& page = mirror.load<FrmPagamento>();
        for (const std::uint32_t other : {0U, 1U, 2U}) {
            mirror.arrive(0, 85, 4);
            EXPECT_TRUE(page.HScroll11[3].usable()) << revision;
            mirror.arrive(0, 85, other);
            EXPECT_EQ(page.HScroll11[2].usable(), revision <= 23) << revision;
            EXPECT_EQ(page.HScroll11[3].usable(), revision <= 23) << revision;
            EXPECT_FALSE(page.HScroll11[0].usable()) << revision;
        }
    }
}

/// A page on a machine where everything can be moved, whatever the payment system.
struct PaymentOnMachine : ::testing::Test {
    StartedWorld world{{0, 84, 0x85}, {0, 330, 0x8001}, {0, 344, 0x0006}, {0, 346, 0xFE}, {0, 348, 0xFC}};
    FrmPagamento& open(std::uint32_t system) {
        world.setBoard(0, 85, 0x20 | system);
        return world.open<FrmPagamento>("FrmPagamento");
    }
};

TEST_F(PaymentOnMachine, TheKindOfExecutiveIsOneOfTwoBitsOrNone) {
    auto& page = open(2);
    for (const auto& [position, value] : {std::pair(1, 0x62U), {2, 0xA2U}, {0, 0x22U}, {2, 0xA2U}})
        expectMove(world, page.SliderX5, position, Setting{0, 85, 87}.as(value));
}

TEST_F(PaymentOnMachine, ChoosingACoinOrBanknoteShowsItsBitAndLeavesTheMaskAsItIs) {
    const struct {
        SliderSwitch FrmPagamento::*selector;
        SliderSwitch FrmPagamento::*shown;
        int parameter;
        std::uint32_t mask;
    } cases[] = {{&FrmPagamento::SliderX1, &FrmPagamento::SliderX4, 330, 0x8001},
                 {&FrmPagamento::SliderX7, &FrmPagamento::SliderX6, 344, 0x0006}};
    auto& page = open(4);
    for (const auto& c : cases) {
        int shownBefore = (page.*c.shown).Position;
        for (const int position : {1, 2, 14, 15, 3, 0}) {
            const int bit = static_cast<int>(c.mask >> position & 1U);
            const Writes harmless = Setting{0, c.parameter, c.parameter + 1}.as(c.mask);
            expectMove(world, page.*c.selector, position, bit == shownBefore ? Writes{} : harmless);
            EXPECT_EQ((page.*c.shown).Position, bit) << position;
            shownBefore = bit;
        }
    }
    page.SliderX1.UserMove(15);
    EXPECT_FALSE(page.SliderX1.waiting()) << "a choice waits for no board";
    world.settle();
    expectMove(world, page.SliderX4, 0, Setting{0, 330, 331}.as(1));
}

TEST(FrmPagamento, DecimalsRedrawAllMoneyButTheTwoCredits) {
    BareMirror mirror;
    auto& page = mirror.load<FrmPagamento>();
    const std::pair<int, Label*> money[] = {{312, &page.Label10[0]}, {319, &page.Label10[7]}, {328, &page.Label11[0]},
                                            {332, &page.Label11[2]}, {334, &page.Label11[3]}, {336, &page.Label6s[0]},
                                            {338, &page.Label6s[2]}};
    for (const auto& [n, label] : money) {
        mirror.arrive(0, n, 250);
        EXPECT_EQ(label->Caption.get(), "") << n << " came before the decimals";
    }
    mirror.arrive(0, 3, 2);
    for (const auto& [n, label] : money) {
        const bool credit = n == 332 || n == 334;
        EXPECT_EQ(label->Caption.get(), credit ? "" : "2.50") << n;
        mirror.arrive(0, n, 251);
        EXPECT_EQ(label->Caption.get(), "2.51") << n;
    }
    mirror.arrive(0, 3, 1);
    for (const auto& [n, label] : money) EXPECT_EQ(label->Caption.get(), n == 332 || n == 334 ? "2.51" : "25.1") << n;
    EXPECT_EQ(page.HScroll11[2].textOf(0), "3276.8") << "what is typed is always in the decimals in force";
    mirror.arrive(0, 332, 251);
    EXPECT_EQ(page.Label11[2].Caption.get(), "25.1");
    page.Label10[0].Caption = "as it was";
    mirror.arrive(0, 3, 5);
    EXPECT_EQ(page.Label10[0].Caption.get(), "as it was");
    ParamFlags(0, 3) = 0;
    for (const auto& [n, label] : money) {
        label->Caption = "as it was";
        mirror.arrive(0, n, 7);
        EXPECT_EQ(label->Caption.get(), "as it was") << n << " came while the decimals were unsure";
    }
}

TEST(FrmPagamento, GivesBackAnotherListThanItWatches) {
    BareMirror mirror;
    constexpr int Others = 5;  ///< subscriptions of other pages
    for (int n = 1; n <= 360; ++n) ParamTable(0, n).Watchers = Others;
    mirror.load<FrmPagamento>().UserClose();
    const Watches unwatched = watchesOf("0: 86-87 320-327 329 331");
    const Watches twice = watchesOf("0: 84-85 330");
    for (int n = 1; n <= 360; ++n) {
        const bool takenFromOthers = unwatched.contains({0, n}) || twice.contains({0, n});
        EXPECT_EQ(ParamTable(0, n).Watchers, Others - (takenFromOthers ? 1 : 0)) << n;
    }
}

}  // namespace
}  // namespace kestrel::testing

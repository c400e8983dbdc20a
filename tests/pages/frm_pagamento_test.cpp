// The page of the payment system: which frames the master's choice opens, what each control writes, and the
// lists of watched and released parameters, which are not alike.
#include "pages/payment/frm_pagamento.h"

#include <gtest/gtest.h>

#include <map>

#include "support/arrivals.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::Bench;
using testing::preload;
using testing::tell;
using testing::World;
using testing::Writes;

/// One letter for each part of the page that a user can act on: coin 7, other coins, executive, its timeout, MDB,
/// credits.
std::string openParts(FrmPagamento& page) {
    const auto letter = [](const Control& control, const char* name) { return control.usable() ? name : "-"; };
    std::string open = letter(page.HScroll10[6], "7");
    open += letter(page.HScroll10[0], "c");
    open += letter(page.SliderX5, "e");
    open += letter(page.scrTP, "t");
    open += letter(page.iSwitchSliderX2, "m");
    open += letter(page.HScroll11[2], "r");
    return open;
}

/// Controls of one part open and close together.
void expectAlike(FrmPagamento& page) {
    const auto alike = [](const Control& first, std::initializer_list<const Control*> others) {
        for (const Control* other : others) EXPECT_EQ(other->usable(), first.usable());
    };
    for (const int i : {1, 2, 3, 4, 5, 7})
        alike(page.HScroll10[0], {&page.HScroll10[i], &page.Label10[i], &page.Label1[i]});
    alike(page.HScroll10[6], {&page.Label10[6], &page.Label1[6]});
    alike(page.SliderX5, {&page.Frame4, &page.Label13, &page.SwitchX5[0]});
    alike(page.scrTP, {&page.Label8, &page.Label8v});
    alike(page.iSwitchSliderX2,
          {&page.Frame2, &page.Frame3, &page.Frame5, &page.Frame6, &page.Label2, &page.Label12, &page.Label5,
           &page.Label9, &page.Label7, &page.Label4[0], &page.Label11[0], &page.HScroll11[0], &page.SliderX1,
           &page.SliderX7, &page.SliderX4, &page.SliderX6, &page.Label3[3], &page.SwitchX5[1]});
    for (int i = 0; i < 3; ++i)
        alike(page.iSwitchSliderX2,
              {&page.Label6[i], &page.Label6s[i], &page.HScroll6[i], &page.Label3[i], &page.iSwSliderX3[i]});
    alike(page.HScroll11[2],
          {&page.Label4[2], &page.Label4[3], &page.Label11[2], &page.Label11[3], &page.HScroll11[3]});
}

TEST(FrmPagamento, FramesFollowThePaymentSystem) {
    const struct {
        std::uint32_t parameter85;
        const char* open;
        int executive;  ///< position of SliderX5
    } cases[] = {{0, "7-----", 0},       {1, "7c----", 0},       {2, "--e---", 0},       {3, "--e---", 0},
                 {4, "----mr", 0},       {5, "----mr", 0},       {6, "----mr", 0},       {7, "----mr", 0},
                 {2 + 64, "--et--", 1},  {2 + 128, "--et--", 2}, {2 + 192, "--et--", 1}, {64, "7-----", 1},
                 {1 + 128, "7c----", 2}, {4 + 64, "----mr", 1},  {2, "--e---", 0}};
    Bench bench;
    SetBoardRevision(24);
    auto& page = bench.load<FrmPagamento>();
    for (const auto& c : cases) {
        tell(page, 0, 85, c.parameter85);
        EXPECT_EQ(openParts(page), c.open) << c.parameter85;
        EXPECT_EQ(page.SliderX5.Position, c.executive) << c.parameter85;
        expectAlike(page);
    }
    tell(page, 1, 85, 4);
    EXPECT_EQ(openParts(page), "--e---") << "another board's parameter";
}

TEST(FrmPagamento, BoardsUpToRevision23LeaveTheCreditRowsAsTheyWere) {
    for (const int revision : {0, 23, 24, 255}) {
        Bench bench;
        SetBoardRevision(revision);
        auto& page = bench.load<FrmPagamento>();
        for (const std::uint32_t other : {0U, 1U, 2U}) {
            tell(page, 0, 85, 4);
            EXPECT_TRUE(page.HScroll11[3].usable()) << revision;
            tell(page, 0, 85, other);
            EXPECT_EQ(page.HScroll11[2].usable(), revision <= 23) << revision;
            EXPECT_EQ(page.HScroll11[3].usable(), revision <= 23) << revision;
            EXPECT_FALSE(page.HScroll11[0].usable()) << revision;
        }
    }
}

/// A page on a machine where everything can be moved, whatever the payment system.
class PaymentOnMachine : public ::testing::Test {
  protected:
    PaymentOnMachine() {
        world.start();
        world.setBoard(0, 3, 2);
        for (const auto& [n, value] : std::map<int, std::uint32_t>{
                 {84, 0x85}, {85, 0x21}, {330, 0x8001}, {344, 0x0006}, {346, 0xFE}, {348, 0xFC}, {342, 100}})
            world.setBoard(0, n, value);
    }
    FrmPagamento& open(std::uint32_t system) {
        world.setBoard(0, 85, 0x20 | system);
        return world.open<FrmPagamento>("FrmPagamento");
    }
    World world;
};

TEST_F(PaymentOnMachine, EveryBarWritesItsParameterAndItsCopyOnly) {
    const auto expectMove = [&](ScrollBar& bar, Label& label, std::pair<int, int> parameters, std::uint32_t raw,
                                const std::string& text) {
        const std::optional<int> to = bar.valueOf(text);
        ASSERT_TRUE(to) << text;
        EXPECT_EQ(writesOf(world, [&] { bar.UserMove(*to); }),
                  (Writes{{0, parameters.first, raw}, {0, parameters.second, raw}}));
        EXPECT_EQ(label.Caption.get(), text) << parameters.first;
    };
    auto& mdb = open(4);
    expectMove(mdb.HScroll11[0], mdb.Label11[0], {328, 329}, 1234, "12.34");
    expectMove(mdb.HScroll11[2], mdb.Label11[2], {332, 333}, 40000, "400.00");
    expectMove(mdb.HScroll11[3], mdb.Label11[3], {334, 335}, 0, "0.00");
    for (int i = 0; i < 3; ++i)
        expectMove(mdb.HScroll6[i], mdb.Label6s[i], {336 + i, 339 + i}, 32773U + static_cast<unsigned>(i),
                   "327." + std::to_string(73 + i));
    mdb.UserClose();
    auto& executive = open(2 + 64);
    expectMove(executive.scrTP, executive.Label8v, {342, 343}, 21, "2.1");
    executive.UserClose();
    auto& g13 = open(1);
    for (int i = 0; i < 8; ++i)
        expectMove(g13.HScroll10[i], g13.Label10[i], {312 + i, 320 + i}, 65535U - static_cast<unsigned>(i),
                   "655." + std::to_string(35 - i));
}

TEST_F(PaymentOnMachine, EverySwitchChangesItsOwnBitsAlone) {
    using Moves = std::vector<std::pair<int, std::uint32_t>>;  // position, and the value that the board then holds
    const auto expectMoves = [&](SliderSwitch& control, int parameter, int shadow, const Moves& moves) {
        for (const auto& [position, value] : moves) {
            EXPECT_EQ(writesOf(world, [&, to = position] { control.UserMove(to); }),
                      (Writes{{0, parameter, value}, {0, shadow, value}}))
                << parameter;
            EXPECT_EQ(control.Position, position);
            EXPECT_FALSE(control.waiting());
        }
    };
    auto& mdb = open(4);
    expectMoves(mdb.iSwitchSliderX2, 84, 86, {{1, 0xA5}, {0, 0x85}});
    expectMoves(mdb.iSwSliderX3[0], 84, 86, {{1, 0x8D}, {0, 0x85}});
    expectMoves(mdb.iSwSliderX3[1], 84, 86, {{1, 0x95}, {0, 0x85}});
    expectMoves(mdb.iSwSliderX3[2], 84, 86, {{1, 0xC5}, {0, 0x85}});
    expectMoves(mdb.SwitchX5[1], 348, 349, {{1, 0xFE}, {0, 0xFC}});
    expectMoves(mdb.SliderX4, 330, 331, {{0, 0x8000}, {1, 0x8001}});
    expectMoves(mdb.SliderX6, 344, 345, {{1, 0x0007}, {0, 0x0006}});
    mdb.UserClose();
    auto& executive = open(2);
    expectMoves(executive.SwitchX5[0], 346, 347, {{1, 0xFF}, {0, 0xFE}});
    expectMoves(executive.SliderX5, 85, 87, {{1, 0x62}, {2, 0xA2}, {0, 0x22}, {2, 0xA2}});
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
            const Writes harmless = {{0, c.parameter, c.mask}, {0, c.parameter + 1, c.mask}};
            EXPECT_EQ(writesOf(world, [&] { (page.*c.selector).UserMove(position); }),
                      bit == shownBefore ? Writes{} : harmless)
                << position;
            EXPECT_EQ((page.*c.shown).Position, bit) << position;
            EXPECT_FALSE((page.*c.selector).waiting()) << "a choice waits for no board";
            shownBefore = bit;
        }
    }
    page.SliderX1.UserMove(15);
    world.settle();
    EXPECT_EQ(writesOf(world, [&] { page.SliderX4.UserMove(0); }), (Writes{{0, 330, 1}, {0, 331, 1}}));
}

TEST(FrmPagamento, DecimalsRedrawAllMoneyButTheTwoCredits) {
    Bench bench;
    auto& page = bench.load<FrmPagamento>();
    const std::pair<int, Label*> money[] = {{312, &page.Label10[0]}, {319, &page.Label10[7]}, {328, &page.Label11[0]},
                                            {332, &page.Label11[2]}, {334, &page.Label11[3]}, {336, &page.Label6s[0]},
                                            {338, &page.Label6s[2]}};
    for (const auto& [n, label] : money) {
        tell(page, 0, n, 250);
        EXPECT_EQ(label->Caption.get(), "") << n << " came before the decimals";
    }
    tell(page, 0, 3, 2);
    for (const auto& [n, label] : money) {
        const bool credit = n == 332 || n == 334;
        EXPECT_EQ(label->Caption.get(), credit ? "" : "2.50") << n;
        tell(page, 0, n, 251);
        EXPECT_EQ(label->Caption.get(), "2.51") << n;
    }
    tell(page, 0, 3, 1);
    for (const auto& [n, label] : money) EXPECT_EQ(label->Caption.get(), n == 332 || n == 334 ? "2.51" : "25.1") << n;
    EXPECT_EQ(page.HScroll11[2].textOf(0), "3276.8") << "what is typed is always in the decimals in force";
    tell(page, 0, 332, 251);
    EXPECT_EQ(page.Label11[2].Caption.get(), "25.1");
    page.Label10[0].Caption = "as it was";
    tell(page, 0, 3, 5);
    EXPECT_EQ(page.Label10[0].Caption.get(), "as it was");
    ParamFlags(0, 3) = 0;
    for (const auto& [n, label] : money) {
        label->Caption = "as it was";
        tell(page, 0, n, 7);
        EXPECT_EQ(label->Caption.get(), "as it was") << n << " came while the decimals were unsure";
    }
}

TEST(FrmPagamento, ClampsWhatComesAndLeavesTheBoardsValueInItsMirror) {
    Bench bench;
    auto& page = bench.load<FrmPagamento>();
    tell(page, 0, 3, 2);
    tell(page, 0, 328, 12000);
    EXPECT_EQ(page.HScroll11[0].Value, 9999);
    EXPECT_EQ(page.Label11[0].Caption.get(), "99.99");
    EXPECT_EQ(ParamRead(328, 0), 12000);
    EXPECT_EQ(ParamFlags(0, 328) & flag::WriteDue, 0);
    tell(page, 0, 3, 1);
    EXPECT_EQ(page.Label11[0].Caption.get(), "1200.0") << "drawn anew, the label is not held back";
    const struct {
        std::uint32_t raw;
        int bar;
        const char* text;
    } timeouts[] = {{19, 20, "1.9"}, {20, 20, "2.0"}, {250, 250, "25.0"}, {255, 250, "25.5"}};
    for (const auto& c : timeouts) {
        tell(page, 0, 342, c.raw);
        EXPECT_EQ(page.scrTP.Value, c.bar);
        EXPECT_EQ(page.Label8v.Caption.get(), c.text);
    }
    tell(page, 0, 312, 40000);
    EXPECT_EQ(page.HScroll10[0].Value, 7232);
}

TEST(FrmPagamento, GivesBackAnotherListThanItWatches) {
    Bench bench;
    SetBoardPresent(0, true);
    constexpr int Others = 5;  ///< subscriptions of other pages
    for (int n = 1; n <= 360; ++n) ParamTable(0, n).Watchers = Others;
    auto& page = bench.load<FrmPagamento>();
    std::map<int, int> watched;
    for (int n = 1; n <= 360; ++n) watched[n] = ParamTable(0, n).Watchers - Others;
    page.UserClose();
    const auto within = [](int n, int first, int last) { return n >= first && n <= last; };
    for (int n = 1; n <= 360; ++n) {
        const bool shown = n == 3 || n == 84 || n == 85 || within(n, 312, 319) || n == 328 || n == 330 ||
                           within(n, 332, 338) || within(n, 342, 349);
        const bool givenBackUnwatched = n == 86 || n == 87 || within(n, 320, 327) || n == 329 || n == 331;
        const bool givenBackTwice = n == 84 || n == 85 || n == 330;
        EXPECT_EQ(watched[n], shown ? 1 : 0) << n;
        EXPECT_EQ(ParamTable(0, n).Watchers, Others - (givenBackUnwatched || givenBackTwice ? 1 : 0)) << n;
    }
}

TEST(FrmPagamento, OpeningWritesNothingAndSpeaksTheLanguage) {
    World world;
    world.start();
    EXPECT_EQ(writesOf(world, [&] { ShowPage("FrmPagamento"); }), Writes{});
    auto& page = world.open<FrmPagamento>("FrmPagamento");
    const std::pair<const Property<std::string>*, const char*> texts[] = {
        {&page.Caption, "Sist. di pagamento"},
        {&page.Label1[7].Caption, "Moneta 8"},
        {&page.Label6[2].Caption, "token 3"},
        {&page.Label4[2].Caption, "credito massimo chiave"},
        {&page.Label4[3].Caption, "credito massimo monete"},
        {&page.Label8.Caption, "timeout prezzo"},
        {&page.SliderX4.PositionLabels, "Off,On"},
        {&page.iSwSliderX3[2].PositionLabels, "Off,On"},
        {&page.SliderX5.PositionLabels, "Normale,ECS differenziato,Price holding"},
        {&page.SwitchX5[0].PositionLabels, "No, Si"},
    };
    for (const auto& [property, text] : texts) EXPECT_EQ(property->get(), text);
    for (const SliderSwitch* selector : {&page.SliderX1, &page.SliderX7}) EXPECT_EQ(selector->top(), 15);
    EXPECT_EQ(page.SliderX5.accessibleName(), "Executive");
}

}  // namespace
}  // namespace kestrel

// The pages of money: the payment system, price lists, and which price a selection or a sector has.
// An amount in the wrong decimals, or a lock that is missing, costs the owner of the machine real money.
#include <gtest/gtest.h>

#include "link/identification.h"
#include "pages/payment/frm_pagamento.h"
#include "pages/payment/frm_prezzi.h"
#include "pages/payment/price_assignment.h"
#include "pages/registry.h"
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
TEST(FrmPagamento, ChangedDecimalsRedrawAllMoneyButTheTwoCredits) {
    BareMirror mirror;
    auto& page = mirror.load<FrmPagamento>();
    const std::pair<int, Label*> money[] = {{312, &page.Label10[0]}, {319, &page.Label10[7]}, {328, &page.Label11[0]},
                                            {332, &page.Label11[2]}, {334, &page.Label11[3]}, {336, &page.Label6s[0]},
                                            {338, &page.Label6s[2]}};
    mirror.arrive(0, 3, 2);
    for (const auto& [n, label] : money) {
        mirror.arrive(0, n, 251);
        EXPECT_EQ(label->Caption.get(), "2.51") << n;
    }
    mirror.arrive(0, 3, 1);
    for (const auto& [n, label] : money) EXPECT_EQ(label->Caption.get(), n == 332 || n == 334 ? "2.51" : "25.1") << n;
    EXPECT_EQ(page.HScroll11[2].textOf(0), "3276.8") << "what is typed is always in the decimals in force";
}

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

/// What differs between the two pages.
struct List {
    const char* name;
    std::size_t rows;
    int first, last;  ///< parameters of the first and of the last row
    bool waitsForDecimals;
};
const List Lists[] = {{"FrmPrezzi", 38, 16, 79, false}, {"FrmSconti", 35, 88, 156, true}};

TEST(PriceLists, AmountsWaitForTheDecimalsAndFollowTheirChange) {
    for (const List& list : Lists)
        for (const auto& [row, parameter] : {std::pair(std::size_t{4}, list.first + 4), {list.rows - 1, list.last}}) {
            SCOPED_TRACE(std::string(list.name) + " " + std::to_string(row));
            BareMirror mirror;
            const auto bars = barsOf(LoadPage(AllPages().at(list.name)()).Arrange());
            ASSERT_EQ(bars.size(), list.rows);
            const auto [bar, figure] = bars[row];
            mirror.arrive(0, parameter, 150);
            EXPECT_EQ(figure->Caption.get(), "") << "no decimals are known yet";
            const std::pair<std::uint32_t, const char*> changes[] = {
                {2, "1.50"}, {1, "15.0"}, {7, "0.150"}, {4, "150"}, {6, "1.50"}};
            for (const auto& [decimals, text] : changes) {
                mirror.arrive(0, 3, decimals);
                EXPECT_EQ(figure->Caption.get(), text);
                EXPECT_EQ(bar->textOf(bar->Value), text);
                for (const auto& other : bars) EXPECT_NE(other.second->Caption.get(), "");
            }
            figure->Caption = "as it was";
            mirror.arrive(0, 3, 2);
            EXPECT_EQ(figure->Caption.get(), "as it was") << "the same decimals draw nothing anew";
            mirror.arrive(1, 3, 1);
            mirror.arrive(2, parameter, 99);
            EXPECT_EQ(figure->Caption.get(), "as it was") << "other boards have no amounts";
            ParamFlags(0, 3) = 0;
            mirror.arrive(0, parameter, 99);
            EXPECT_EQ(figure->Caption.get(), "as it was") << "the decimals are unsure";
        }
}

TEST(PriceLists, TheThirtyBarsOpenTogetherWhenTheLastValueHasCome) {
    for (const List& list : Lists)
        for (const int last : {0, 14, 29}) {
            SCOPED_TRACE(std::string(list.name) + " " + std::to_string(last));
            BareMirror mirror;
            Page& page = LoadPage(AllPages().at(list.name)());
            const auto live = [&] { return usableInputs(page.Arrange()); };
            const int others = live();
            for (int row = 0; row < 30; ++row)
                if (row != last) mirror.arrive(0, list.first + row, 50);
            EXPECT_EQ(live(), others);
            mirror.arrive(0, list.first + last, 50);
            EXPECT_EQ(live(), others + (list.waitsForDecimals ? 0 : 30));
            mirror.arrive(0, 3, 2);
            EXPECT_EQ(live(), others + 30);
            barsOf(page.Arrange())[3].first->UserMove(0);
            mirror.arrive(0, 3, 2);
            EXPECT_EQ(live(), others + 30) << "a value on its way to the board shuts nothing";
        }
}

TEST(PriceLists, PricesBeyondTheBarAreCutWhenTheyComeAndWholeWhenDrawnAnew) {
    BareMirror mirror;
    auto& page = mirror.load<FrmPrezzi>();
    mirror.arrive(0, 3, 2);
    mirror.arrive(0, 16, 70000);
    EXPECT_EQ(page.HScroll1[0].Value, 32767);
    EXPECT_EQ(page.Label1[0].Caption.get(), "655.35");
    mirror.arrive(0, 3, 1);
    EXPECT_EQ(page.HScroll1[0].Value, 32767);
    EXPECT_EQ(page.Label1[0].Caption.get(), "7000.0");
}

struct Kind {
    const char* name;
    const AssignmentDesign& design;
    int rows;
    int bank;
    int first;
    int gate;
    int enough;          ///< rows that open the bars
    bool gateOpensBars;  ///< even while all is at price one
};

const Kind Kinds[] = {{"FrmAssSel", FrmAssSel, 18, 1, 1163, 1, 14, false},
                      {"FrmAssSet", FrmAssSet, 48, 2, 1, 2, 48, true}};

class PriceAssignmentTest : public ::testing::TestWithParam<Kind> {
  protected:
    const Kind& kind = GetParam();
    BareMirror mirror;
    PriceAssignment& page = mirror.load<PriceAssignment>(kind.design);

    void rowsArrive(int from, int to) {
        for (int k = from; k < to; ++k) mirror.arrive(kind.bank, kind.first + k, 0);
    }
    void gate(std::uint32_t word) { mirror.arrive(0, kind.gate, word); }
    void saleOptions(std::uint32_t bits) { mirror.arrive(0, 84, bits); }
    int usableBars() {
        int usable = 0;
        for (int k = 0; k < kind.rows; ++k) usable += page.HScroll1[k].usable() ? 1 : 0;
        return usable;
    }
};

TEST_P(PriceAssignmentTest, BarsOpenWhenEnoughRowsHaveComeAndStayOpen) {
    saleOptions(0);
    gate(4);
    EXPECT_TRUE(page.Label1[0].Enabled);
    rowsArrive(0, kind.enough - 1);
    rowsArrive(kind.enough, kind.rows);
    EXPECT_EQ(usableBars(), 0) << "one of those that count is missing";
    rowsArrive(kind.enough - 1, kind.enough);
    EXPECT_EQ(usableBars(), kind.rows);
    page.HScroll1[0].UserMove(5);
    mirror.arrive(0, 3, 0);
    EXPECT_EQ(usableBars(), kind.rows) << "a change on its way to the board shuts nothing";
}

TEST_P(PriceAssignmentTest, AllAtPriceOneShutsTheRowsAndANewWordOfTheGateOpensThoseOfSectors) {
    rowsArrive(0, kind.rows);
    gate(4);
    saleOptions(0xFF);
    EXPECT_EQ(usableBars(), 0);
    EXPECT_FALSE(page.Label1[0].Enabled);
    gate(4);
    EXPECT_EQ(usableBars(), 0) << "the gate is polled; the same word again opens nothing";
    gate(12);
    EXPECT_EQ(usableBars(), kind.gateOpensBars ? kind.rows : 0);
    EXPECT_TRUE(page.Label1[0].Enabled);
    saleOptions(0xFE);
    EXPECT_EQ(usableBars(), kind.rows);
    gate(0);
    saleOptions(0);
    EXPECT_EQ(usableBars(), 0) << "the gate is shut";
}

TEST_P(PriceAssignmentTest, ARowShowsTheAmountOfItsPriceWhereThePriceListIsKnown) {
    mirror.arrive(kind.bank, kind.first, 18);
    const Property<std::string>& amount = kind.rows > 18 ? page.amounts[0].Caption : page.Label1[0].Unit;
    EXPECT_EQ(page.Label1[0].Caption.get() + amount.get(), "19");
    mirror.arrive(0, 16 + 18, 80);
    EXPECT_EQ(amount.get(), "") << "no amount without its decimals";
    mirror.arrive(0, 3, 2);
    EXPECT_TRUE(amount.get().ends_with("0.80"));
    mirror.arrive(0, 16 + 18, 95);
    EXPECT_TRUE(amount.get().ends_with("0.95"));
    mirror.arrive(kind.bank, kind.first, 17);
    EXPECT_EQ(amount.get(), "") << "another price, which has not been read";
    mirror.arrive(kind.bank, kind.first, 40);
    EXPECT_EQ(page.Label1[0].Caption.get() + amount.get(), "41") << "a price that there is not";
}

INSTANTIATE_TEST_SUITE_P(Pages, PriceAssignmentTest, ::testing::ValuesIn(Kinds),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace kestrel::testing

// The pages that give selections and sectors their prices: every row on its own parameter, and what opens the rows.
// The two pages differ in small ways that a technician meets; each has its own line here.
#include "pages/payment/price_assignment.h"

#include <gtest/gtest.h>

#include "support/arrivals.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::Bench;
using testing::tell;
using testing::World;
using testing::Writes;

struct Kind {
    const char* name;
    const AssignmentDesign& design;
    int rows;
    int bank;
    int first;
    int shadow;
    int gate;
    int enough;  ///< rows that open the bars
};

const Kind Kinds[] = {{"FrmAssSel", FrmAssSel, 18, 1, 1163, 1181, 1, 14},
                      {"FrmAssSet", FrmAssSet, 48, 2, 1, 216, 2, 48}};

int usableBars(PriceAssignment& page, const Kind& kind) {
    int usable = 0;
    for (int k = 0; k < kind.rows; ++k) usable += page.HScroll1[k].usable() ? 1 : 0;
    return usable;
}

void tellRows(PriceAssignment& page, const Kind& kind, int from, int to) {
    for (int k = from; k < to; ++k) tell(page, kind.bank, kind.first + k, 0);
}

class PriceAssignmentTest : public ::testing::TestWithParam<Kind> {
  protected:
    const Kind& kind = GetParam();
};

TEST_P(PriceAssignmentTest, EveryRowLandsOnItsOwnParameterAndItsCopyOnly) {
    World world;
    world.start();
    for (int k = 0; k < kind.rows; ++k) world.setBoard(kind.bank, kind.first + k, static_cast<std::uint32_t>(k % 30));
    PriceAssignment* opened = nullptr;
    EXPECT_EQ(writesOf(world, [&] { opened = &world.open<PriceAssignment>(kind.name); }), Writes{});
    PriceAssignment& page = *opened;
    for (int k = 0; k < kind.rows; ++k) {
        EXPECT_EQ(page.Label1[k].Caption.get(), std::to_string(k % 30 + 1));
        const int number = (k + 7) % 30 + 1;
        const auto raw = static_cast<std::uint32_t>(number - 1);
        EXPECT_EQ(writesOf(world, [&] { page.HScroll1[k].UserMove(number); }),
                  (Writes{{kind.bank, kind.first + k, raw}, {kind.bank, kind.shadow + k, raw}}))
            << k;
        EXPECT_EQ(page.Label1[k].Caption.get(), std::to_string(number));
    }
}

TEST_P(PriceAssignmentTest, ShowsPriceNumbersFromOneAndWhatTheBoardSaysBeyondThirty) {
    Bench bench;
    auto& page = bench.load<PriceAssignment>(kind.design);
    const struct {
        std::uint32_t raw;
        int bar;
        const char* text;
    } cases[] = {{0, 1, "1"}, {29, 30, "30"}, {40, 30, "41"}, {255, 30, "256"}};
    const int last = kind.rows - 1;
    for (const auto& c : cases) {
        tell(page, kind.bank, kind.first + last, c.raw);
        EXPECT_EQ(page.HScroll1[last].Value, c.bar);
        EXPECT_EQ(page.Label1[last].Caption.get(), c.text);
    }
    tell(page, 0, kind.first + last, 3);
    tell(page, kind.bank, kind.first + kind.rows, 3);
    EXPECT_EQ(page.Label1[last].Caption.get(), "256") << "another board's, or the next parameter";
}

TEST_P(PriceAssignmentTest, TheGateRulesTheRowsAndValuesGoOnArriving) {
    Bench bench;
    auto& page = bench.load<PriceAssignment>(kind.design);
    tellRows(page, kind, 0, kind.rows);
    EXPECT_EQ(usableBars(page, kind), kind.rows) << "the gate counts as open until it is known";
    for (const std::uint32_t gate : {0xFBU, 4U, 0U}) {
        tell(page, 0, kind.gate, gate);
        const bool open = (gate & 4U) != 0;
        EXPECT_EQ(usableBars(page, kind), open ? kind.rows : 0) << gate;
        EXPECT_EQ(page.Label1[0].Enabled, open);
        EXPECT_EQ(page.Label11[0].Enabled, open);
    }
    tell(page, kind.bank, kind.first, 11);
    EXPECT_EQ(page.Label1[0].Caption.get(), "12");
    EXPECT_EQ(usableBars(page, kind), 0);
    tell(page, kind.bank, kind.gate, 4);
    EXPECT_EQ(usableBars(page, kind), 0) << "only the master speaks for its boards";
}

TEST_P(PriceAssignmentTest, BarsOpenWhenEnoughRowsHaveComeAndStayOpen) {
    Bench bench;
    auto& page = bench.load<PriceAssignment>(kind.design);
    tell(page, 0, 84, 0);
    tell(page, 0, kind.gate, 4);
    EXPECT_TRUE(page.Label1[0].Enabled);
    tellRows(page, kind, 0, kind.enough - 1);
    tellRows(page, kind, kind.enough, kind.rows);
    EXPECT_EQ(usableBars(page, kind), 0) << "one of those that count is missing";
    tellRows(page, kind, kind.enough - 1, kind.enough);
    EXPECT_EQ(usableBars(page, kind), kind.rows);
    page.HScroll1[0].UserMove(5);
    tell(page, 0, 3, 0);
    EXPECT_EQ(usableBars(page, kind), kind.rows) << "a change on its way to the board shuts nothing";
}

TEST_P(PriceAssignmentTest, AllAtPriceOneShutsTheRows) {
    Bench bench;
    auto& page = bench.load<PriceAssignment>(kind.design);
    tellRows(page, kind, 0, kind.rows);
    tell(page, 0, kind.gate, 4);
    tell(page, 0, 84, 0xFF);
    EXPECT_EQ(usableBars(page, kind), 0);
    EXPECT_FALSE(page.Label1[0].Enabled);
    tell(page, 0, 84, 0xFE);
    EXPECT_EQ(usableBars(page, kind), kind.rows);
    tell(page, 0, kind.gate, 0);
    tell(page, 0, 84, 0);
    EXPECT_EQ(usableBars(page, kind), 0) << "the gate is shut";
}

INSTANTIATE_TEST_SUITE_P(Pages, PriceAssignmentTest, ::testing::ValuesIn(Kinds),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(PriceAssignment, TheGateOpensSectorBarsEvenWhileAllIsAtPriceOneAndNoSelectionBars) {
    for (const Kind& kind : Kinds) {
        Bench bench;
        auto& page = bench.load<PriceAssignment>(kind.design);
        tellRows(page, kind, 0, kind.rows);
        tell(page, 0, kind.gate, 4);
        tell(page, 0, 84, 1);
        tell(page, 0, kind.gate, 4);
        EXPECT_EQ(usableBars(page, kind), 0) << "the gate is polled; the same word again opens nothing";
        tell(page, 0, kind.gate, 12);
        EXPECT_EQ(usableBars(page, kind), kind.bank == 2 ? 48 : 0);
        EXPECT_TRUE(page.Label1[0].Enabled);
    }
}

TEST(PriceAssignment, NamesRowsByNumberAndSectorsByRowAndColumn) {
    World world;
    world.start();
    auto& selections = world.open<PriceAssignment>("FrmAssSel");
    auto& sectors = world.open<PriceAssignment>("FrmAssSet");
    EXPECT_EQ(selections.Caption.get(), "Associazione prezzi selezioni");
    EXPECT_EQ(sectors.Caption.get(), "Associazione prezzi settori");
    EXPECT_EQ(selections.Label11[17].Caption.get(), "Prezzo sel. 18");
    const std::pair<int, const char*> captions[] = {
        {0, "Prezzo set. 11"}, {7, "Prezzo set. 18"}, {8, "Prezzo set. 21"}, {47, "Prezzo set. 68"}};
    for (const auto& [row, text] : captions) {
        EXPECT_EQ(sectors.Label11[row].Caption.get(), text);
        EXPECT_EQ(sectors.HScroll1[row].accessibleName(), text);
        EXPECT_EQ(sectors.Label1[row].accessibleName(), text);
    }
}

}  // namespace
}  // namespace kestrel

// The pages that give selections and sectors their prices: what a row shows, and what opens the rows.
// The two pages differ in small ways that a technician meets; each has its own line here.
#include "pages/payment/price_assignment.h"

#include <gtest/gtest.h>

#include "support/bare_mirror.h"

namespace kestrel::testing {
namespace {

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
    const Property<std::string>& amount = kind.rows > 18 ? page.Label1[0].ToolTip : page.Label1[0].Unit;
    EXPECT_EQ(page.Label1[0].Caption.get() + amount.get(), "19");
    mirror.arrive(0, 16 + 18, 80);
    EXPECT_EQ(amount.get(), "") << "no amount without its decimals";
    mirror.arrive(0, 3, 2);
    EXPECT_EQ(amount.get(), "– 0.80");
    mirror.arrive(0, 16 + 18, 95);
    EXPECT_EQ(amount.get(), "– 0.95");
    mirror.arrive(kind.bank, kind.first, 17);
    EXPECT_EQ(amount.get(), "") << "another price, which has not been read";
    mirror.arrive(kind.bank, kind.first, 40);
    EXPECT_EQ(page.Label1[0].Caption.get() + amount.get(), "41") << "a price that there is not";
}

INSTANTIATE_TEST_SUITE_P(Pages, PriceAssignmentTest, ::testing::ValuesIn(Kinds),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace kestrel::testing

// The page of discounts: where it is not like the page of prices.
// The bars also wait for the decimals, and the last row is the discount for a customer's own cup.
#include "pages/payment/frm_sconti.h"

#include <gtest/gtest.h>

#include "support/arrivals.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::Bench;
using testing::tell;
using testing::World;
using testing::Writes;

int parameterOf(int row) { return row < 30 ? 88 + row : row < 34 ? 148 + row - 30 : 156; }
int shadowOf(int row) { return row < 30 ? 118 + row : row < 34 ? 152 + row - 30 : 157; }

TEST(FrmSconti, EveryRowShowsAndWritesItsOwnParameterAndItsCopyOnly) {
    World world;
    world.start();
    world.setBoard(0, 3, 1);
    for (int row = 0; row < 35; ++row) world.setBoard(0, parameterOf(row), static_cast<std::uint32_t>(50000 + row));
    auto& page = world.open<FrmSconti>("FrmSconti");
    for (int row = 0; row < 35; ++row) {
        EXPECT_EQ(page.Label1[row].Caption.get(), std::to_string(5000 + row / 10) + "." + std::to_string(row % 10));
        const auto raw = static_cast<std::uint32_t>(60 + row);
        const Writes writes = writesOf(world, [&] { page.HScroll1[row].UserMove(60 + row - 32768); });
        EXPECT_EQ(writes, (Writes{{0, parameterOf(row), raw}, {0, shadowOf(row), raw}})) << row;
        EXPECT_EQ(page.Label1[row].Caption.get(), std::to_string(raw / 10) + "." + std::to_string(raw % 10));
    }
    page.UserClose();
    EXPECT_EQ(testing::watchersLeft(), 0);
}

TEST(FrmSconti, TheThirtyBarsNeedEveryDiscountAndTheDecimals) {
    for (const int last : {3, 88, 102, 117}) {
        Bench bench;
        auto& page = bench.load<FrmSconti>();
        if (last != 3) tell(page, 0, 3, 2);
        for (int n = 88; n <= 117; ++n)
            if (n != last) tell(page, 0, n, 10);
        for (int row = 0; row < 30; ++row) EXPECT_FALSE(page.HScroll1[row].usable()) << last;
        for (int row = 30; row < 35; ++row) EXPECT_TRUE(page.HScroll1[row].usable()) << row;
        tell(page, 0, last, 2);
        for (int row = 0; row < 30; ++row) EXPECT_TRUE(page.HScroll1[row].usable()) << last;
    }
}

TEST(FrmSconti, DiscountsFollowTheDecimals) {
    Bench bench;
    auto& page = bench.load<FrmSconti>();
    tell(page, 0, 156, 5);
    EXPECT_EQ(page.Label1[34].Caption.get(), "");
    tell(page, 0, 3, 3);
    EXPECT_EQ(page.Label1[34].Caption.get(), "0.005");
    EXPECT_EQ(page.HScroll1[34].textOf(page.HScroll1[34].Value), "0.005");
    EXPECT_EQ(page.Label1[0].Caption.get(), "0.000") << "rows whose value is still out show what the mirror has";
    tell(page, 0, 117, 65535);
    EXPECT_EQ(page.Label1[29].Caption.get(), "65.535");
}

TEST(FrmSconti, NamesEveryRow) {
    World world;
    world.start();
    auto& page = world.open<FrmSconti>("FrmSconti");
    EXPECT_EQ(page.Caption.get(), "Impostazione sconti");
    const std::pair<int, const char*> captions[] = {
        {0, "Sconto 1"}, {29, "Sconto 30"}, {30, "sconto presel. 1 "}, {34, "sconto no bicch. "}};
    for (const auto& [row, text] : captions) EXPECT_EQ(page.Label11[row].Caption.get(), text);
}

}  // namespace
}  // namespace kestrel

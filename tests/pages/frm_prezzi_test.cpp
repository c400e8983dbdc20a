// The page of prices: every amount to the digit, every row on its own two parameters, bars shut until all is known.
// Rows and parameters are counted out here once more, as the board numbers them.
#include "pages/payment/frm_prezzi.h"

#include <gtest/gtest.h>

#include "support/arrivals.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::Bench;
using testing::preload;
using testing::tell;
using testing::World;
using testing::Writes;

int parameterOf(int row) { return row < 30 ? 16 + row : row < 34 ? 8 + row - 30 : 76 + row - 34; }
int shadowOf(int row) { return row < 30 ? 46 + row : row < 34 ? 12 + row - 30 : 80 + row - 34; }

/// The digits of the raw amount with the separator put between them.
std::string written(unsigned raw, unsigned decimals) {
    std::string digits = std::to_string(raw);
    while (digits.size() <= decimals) digits.insert(0, "0");
    if (decimals > 0) digits.insert(digits.size() - decimals, ".");
    return digits;
}

TEST(FrmPrezzi, EveryAmountComesOutToTheDigitOnLabelBarAndBoard) {
    for (unsigned decimals = 0; decimals <= 3; ++decimals) {
        Bench bench;
        auto& page = bench.load<FrmPrezzi>();
        preload(0, 9, 0);
        tell(page, 0, 3, decimals);
        for (unsigned raw = 0; raw <= 65535; ++raw) {
            tell(page, 0, 8, raw);
            ASSERT_EQ(page.Label1[30].Caption.get(), written(raw, decimals));
            ASSERT_EQ(page.HScroll1[30].Value, static_cast<int>(raw) - 32768);
            ASSERT_EQ(page.HScroll1[30].textOf(page.HScroll1[30].Value), written(raw, decimals));
            const auto typed = page.HScroll1[31].valueOf(written(raw, decimals));
            ASSERT_TRUE(typed);
            page.HScroll1[31].UserMove(*typed);
            ASSERT_EQ(ParamRead(9, 0), raw);
        }
    }
}

TEST(FrmPrezzi, EveryRowShowsAndWritesItsOwnParameterAndItsCopyOnly) {
    World world;
    world.start();
    world.setBoard(0, 3, 2);
    for (int row = 0; row < 38; ++row) world.setBoard(0, parameterOf(row), static_cast<std::uint32_t>(1000 + row));
    auto& page = world.open<FrmPrezzi>("FrmPrezzi");
    for (int row = 0; row < 38; ++row) {
        EXPECT_EQ(page.HScroll1[row].LargeChange, 100);
        EXPECT_EQ(page.Label1[row].Caption.get(), "10." + std::to_string(100 + row).substr(1)) << row;
        const auto raw = static_cast<std::uint32_t>(40000 + row);
        const std::string before = page.Label1[row].Caption;
        const Writes writes = writesOf(world, [&] {
            page.HScroll1[row].UserMove(7232 + row);
            EXPECT_EQ(page.Label1[row].Caption.get(), before) << "the label waits for the board";
        });
        EXPECT_EQ(writes, (Writes{{0, parameterOf(row), raw}, {0, shadowOf(row), raw}})) << row;
        EXPECT_EQ(page.Label1[row].Caption.get(), "400." + std::to_string(100 + row).substr(1));
        EXPECT_FALSE(page.HScroll1[row].waiting());
    }
    page.UserClose();
    EXPECT_EQ(testing::watchersLeft(), 0);
}

TEST(FrmPrezzi, PricesWaitForTheDecimalsAndFollowTheirChange) {
    Bench bench;
    auto& page = bench.load<FrmPrezzi>();
    tell(page, 0, 20, 150);
    EXPECT_EQ(page.Label1[4].Caption.get(), "") << "no decimals are known yet";
    const std::pair<std::uint32_t, const char*> changes[] = {
        {2, "1.50"}, {1, "15.0"}, {7, "0.150"}, {4, "150"}, {6, "1.50"}};
    for (const auto& [parameter3, text] : changes) {
        tell(page, 0, 3, parameter3);
        EXPECT_EQ(page.Label1[4].Caption.get(), text);
        EXPECT_EQ(page.HScroll1[4].textOf(page.HScroll1[4].Value), text);
        for (int row = 0; row < 38; ++row) EXPECT_NE(page.Label1[row].Caption.get(), "") << row;
    }
    page.Label1[4].Caption = "as it was";
    tell(page, 0, 3, 2);
    EXPECT_EQ(page.Label1[4].Caption.get(), "as it was") << "the same decimals draw nothing anew";
    tell(page, 1, 3, 1);
    tell(page, 2, 20, 99);
    EXPECT_EQ(page.Label1[4].Caption.get(), "as it was") << "other boards have no prices";
    ParamFlags(0, 3) = 0;
    tell(page, 0, 20, 99);
    EXPECT_EQ(page.Label1[4].Caption.get(), "as it was") << "the decimals are unsure";
}

TEST(FrmPrezzi, AnAmountBeyondTheBarIsCutWhenItComesAndWholeWhenDrawnAnew) {
    Bench bench;
    auto& page = bench.load<FrmPrezzi>();
    tell(page, 0, 3, 2);
    tell(page, 0, 16, 70000);
    EXPECT_EQ(page.HScroll1[0].Value, 32767);
    EXPECT_EQ(page.Label1[0].Caption.get(), "655.35");
    tell(page, 0, 3, 1);
    EXPECT_EQ(page.HScroll1[0].Value, 32767);
    EXPECT_EQ(page.Label1[0].Caption.get(), "7000.0");
}

TEST(FrmPrezzi, TheThirtyBarsOpenTogetherWhenTheLastPriceHasCome) {
    Bench bench;
    auto& page = bench.load<FrmPrezzi>();
    const auto openBars = [&] {
        int open = 0;
        for (int row = 0; row < 30; ++row) open += page.HScroll1[row].usable() ? 1 : 0;
        return open;
    };
    tell(page, 0, 3, 2);
    for (int n = 16; n <= 45; ++n) {
        EXPECT_EQ(openBars(), 0) << n;
        if (n != 30) tell(page, 0, n, 50);
    }
    for (int row = 30; row < 38; ++row) EXPECT_TRUE(page.HScroll1[row].usable()) << row;
    tell(page, 0, 30, 50);
    EXPECT_EQ(openBars(), 30);
    page.HScroll1[3].UserMove(0);
    tell(page, 0, 3, 2);
    EXPECT_EQ(openBars(), 30) << "a price on its way to the board shuts nothing";
}

TEST(FrmPrezzi, AllAtPriceOneChangesItsOwnBitAlone) {
    World world;
    world.start();
    world.setBoard(0, 84, 9);
    auto& page = world.open<FrmPrezzi>("FrmPrezzi");
    EXPECT_EQ(page.Switch1.Position, 1);
    EXPECT_EQ(writesOf(world, [&] { page.Switch1.UserMove(0); }), (Writes{{0, 84, 8}, {0, 86, 8}}));
    EXPECT_EQ(page.Switch1.Position, 0);
    EXPECT_EQ(writesOf(world, [&] { page.Switch1.UserMove(1); }), (Writes{{0, 84, 9}, {0, 86, 9}}));
}

TEST(FrmPrezzi, OpeningWritesNothingAndNamesEveryRow) {
    World world;
    world.start();
    world.setBoard(0, 84, 1);
    FrmPrezzi* page = nullptr;
    EXPECT_EQ(writesOf(world, [&] { page = &world.open<FrmPrezzi>("FrmPrezzi"); }), Writes{});
    EXPECT_EQ(page->Caption.get(), "Impostazione prezzi");
    const std::pair<int, const char*> captions[] = {{0, "Prezzo 1"},        {29, "Prezzo 30"},   {30, "preselezione 1"},
                                                    {33, "preselezione 4"}, {34, "presel. + 1"}, {37, "presel. + 4"}};
    for (const auto& [row, text] : captions) {
        EXPECT_EQ(page->Label11[row].Caption.get(), text);
        EXPECT_EQ(page->HScroll1[row].accessibleName(), text);
    }
}

}  // namespace
}  // namespace kestrel

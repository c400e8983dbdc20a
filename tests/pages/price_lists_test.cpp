// The pages of prices and of discounts: every amount to the digit, every row on its own two parameters, bars shut until
// all is known. Rows and parameters are counted out here once more, as the board numbers them.
#include <gtest/gtest.h>

#include "pages/payment/frm_prezzi.h"
#include "pages/payment/frm_sconti.h"
#include "support/arrivals.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::Bench;
using testing::preload;
using testing::tell;
using testing::World;
using testing::Writes;

/// What differs between the two pages.
template <class P>
struct List;

template <>
struct List<FrmPrezzi> {
    static constexpr const char* Name = "FrmPrezzi";
    static constexpr const char* Title = "Impostazione prezzi";
    static constexpr int Rows = 38;
    static constexpr bool WaitsForDecimals = false;
    static int parameterOf(int row) { return row < 30 ? 16 + row : row < 34 ? 8 + row - 30 : 76 + row - 34; }
    static int shadowOf(int row) { return row < 30 ? 46 + row : row < 34 ? 12 + row - 30 : 80 + row - 34; }
    static inline const std::vector<std::pair<int, const char*>> Captions = {
        {0, "Prezzo 1"},        {29, "Prezzo 30"},   {30, "preselezione 1"},
        {33, "preselezione 4"}, {34, "presel. + 1"}, {37, "presel. + 4"}};
};

template <>
struct List<FrmSconti> {
    static constexpr const char* Name = "FrmSconti";
    static constexpr const char* Title = "Impostazione sconti";
    static constexpr int Rows = 35;
    static constexpr bool WaitsForDecimals = true;
    static int parameterOf(int row) { return row < 30 ? 88 + row : row < 34 ? 148 + row - 30 : 156; }
    static int shadowOf(int row) { return row < 30 ? 118 + row : row < 34 ? 152 + row - 30 : 157; }
    static inline const std::vector<std::pair<int, const char*>> Captions = {
        {0, "Sconto 1"}, {29, "Sconto 30"}, {30, "sconto presel. 1 "}, {34, "sconto no bicch. "}};
};

/// The digits of the raw amount with the separator put between them.
std::string written(unsigned raw, unsigned decimals) {
    std::string digits = std::to_string(raw);
    while (digits.size() <= decimals) digits.insert(0, "0");
    if (decimals > 0) digits.insert(digits.size() - decimals, ".");
    return digits;
}

template <class P>
class PriceLists : public ::testing::Test {
  protected:
    static int openBars(P& page) {
        int open = 0;
        for (int row = 0; row < 30; ++row) open += page.HScroll1[row].usable() ? 1 : 0;
        return open;
    }
};
using Pages = ::testing::Types<FrmPrezzi, FrmSconti>;
TYPED_TEST_SUITE(PriceLists, Pages);

TYPED_TEST(PriceLists, EveryRowShowsAndWritesItsOwnParameterAndItsCopyOnly) {
    using L = List<TypeParam>;
    World world;
    world.start();
    world.setBoard(0, 3, 2);
    for (int row = 0; row < L::Rows; ++row) world.setBoard(0, L::parameterOf(row), 1000U + static_cast<unsigned>(row));
    TypeParam* opened = nullptr;
    EXPECT_EQ(writesOf(world, [&] { opened = &world.open<TypeParam>(L::Name); }), Writes{});
    TypeParam& page = *opened;
    EXPECT_EQ(page.Caption.get(), L::Title);
    for (const auto& [row, text] : L::Captions) {
        EXPECT_EQ(page.Label11[row].Caption.get(), text);
        EXPECT_EQ(page.HScroll1[row].accessibleName(), text);
    }
    for (int row = 0; row < L::Rows; ++row) {
        const std::string before = written(1000U + static_cast<unsigned>(row), 2);
        EXPECT_EQ(page.HScroll1[row].LargeChange, 100);
        EXPECT_EQ(page.Label1[row].Caption.get(), before);
        const auto raw = static_cast<std::uint32_t>(40000 + row);
        const Writes writes = writesOf(world, [&] {
            page.HScroll1[row].UserMove(7232 + row);
            EXPECT_EQ(page.Label1[row].Caption.get(), before) << "the label waits for the board";
        });
        EXPECT_EQ(writes, (Writes{{0, L::parameterOf(row), raw}, {0, L::shadowOf(row), raw}})) << row;
        EXPECT_EQ(page.Label1[row].Caption.get(), written(raw, 2));
        EXPECT_FALSE(page.HScroll1[row].waiting());
    }
}

TYPED_TEST(PriceLists, AmountsWaitForTheDecimalsAndFollowTheirChange) {
    using L = List<TypeParam>;
    for (const int row : {4, L::Rows - 1}) {
        Bench bench;
        auto& page = bench.load<TypeParam>();
        Label& label = page.Label1[row];
        tell(page, 0, L::parameterOf(row), 150);
        EXPECT_EQ(label.Caption.get(), "") << "no decimals are known yet";
        const std::pair<std::uint32_t, const char*> changes[] = {
            {2, "1.50"}, {1, "15.0"}, {7, "0.150"}, {4, "150"}, {6, "1.50"}};
        for (const auto& [parameter3, text] : changes) {
            tell(page, 0, 3, parameter3);
            EXPECT_EQ(label.Caption.get(), text);
            EXPECT_EQ(page.HScroll1[row].textOf(page.HScroll1[row].Value), text);
            for (int other = 0; other < L::Rows; ++other) EXPECT_NE(page.Label1[other].Caption.get(), "") << other;
        }
        label.Caption = "as it was";
        tell(page, 0, 3, 2);
        EXPECT_EQ(label.Caption.get(), "as it was") << "the same decimals draw nothing anew";
        tell(page, 1, 3, 1);
        tell(page, 2, L::parameterOf(row), 99);
        EXPECT_EQ(label.Caption.get(), "as it was") << "other boards have no amounts";
        ParamFlags(0, 3) = 0;
        tell(page, 0, L::parameterOf(row), 99);
        EXPECT_EQ(label.Caption.get(), "as it was") << "the decimals are unsure";
    }
}

TYPED_TEST(PriceLists, TheThirtyBarsOpenTogetherWhenTheLastValueHasCome) {
    using L = List<TypeParam>;
    for (const int last : {0, 14, 29}) {
        Bench bench;
        auto& page = bench.load<TypeParam>();
        for (int row = 0; row < 30; ++row)
            if (row != last) tell(page, 0, L::parameterOf(row), 50);
        EXPECT_EQ(this->openBars(page), 0) << last;
        for (int row = 30; row < L::Rows; ++row) EXPECT_TRUE(page.HScroll1[row].usable()) << row;
        tell(page, 0, L::parameterOf(last), 50);
        EXPECT_EQ(this->openBars(page), L::WaitsForDecimals ? 0 : 30) << last;
        tell(page, 0, 3, 2);
        EXPECT_EQ(this->openBars(page), 30);
        page.HScroll1[3].UserMove(0);
        tell(page, 0, 3, 2);
        EXPECT_EQ(this->openBars(page), 30) << "a value on its way to the board shuts nothing";
    }
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

}  // namespace
}  // namespace kestrel

// The pages of prices and of discounts: amounts in the decimals in force, and bars shut until all is known.
// Rows and parameters are counted out here once more, as the board numbers them.
#include <gtest/gtest.h>

#include "pages/payment/frm_prezzi.h"
#include "pages/registry.h"
#include "support/bare_mirror.h"
#include "support/layouts.h"

namespace kestrel::testing {
namespace {

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

}  // namespace
}  // namespace kestrel::testing

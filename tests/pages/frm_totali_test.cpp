// The page of totals: each number under its own caption, money in the decimals of the board.
// The numbering is not in the order of the rows, so every row is checked by itself.
#include "pages/sales/frm_totali.h"

#include <gtest/gtest.h>

#include "support/world.h"

namespace kestrel {
namespace {

using testing::World;

struct Total {
    int parameter;
    bool clearable;
    int index;
    bool money;
    const char* caption;
};

constexpr Total Totals[] = {
    {164, true, 0, true, "incasso"},  {165, true, 1, true, "sconto"},     {166, true, 2, true, "overpay"},
    {160, true, 3, false, "battute"}, {161, true, 4, false, "gratis"},    {167, true, 5, false, "bricco"},
    {162, true, 6, false, "prova"},   {168, true, 7, false, "presel. 1"}, {169, true, 8, false, "presel. 2"},
    {163, false, 0, true, "incasso"}, {159, false, 1, false, "battute"}};

std::string shown(FrmTotali& page, const Total& total) {
    return total.clearable ? page.Label3[total.index].Caption : page.Label4[total.index].Caption;
}

TEST(FrmTotali, ShowsEveryTotalInItsRowAndMoneyInTheBoardsDecimals) {
    const std::pair<std::uint32_t, std::string> decimals[] = {
        {0, "123456"}, {1, "12345.6"}, {2, "1234.56"}, {3, "123.456"}, {6, "1234.56"}};
    for (const auto& [parameter3, money] : decimals) {
        World world;
        world.start();
        world.setBoard(0, 3, parameter3);
        for (const Total& total : Totals)
            world.setBoard(0, total.parameter, total.money ? 123456U : 1000U + static_cast<unsigned>(total.parameter));
        auto& page = world.open<FrmTotali>("FrmTotali");
        for (const Total& total : Totals) {
            EXPECT_EQ(shown(page, total), total.money ? money : std::to_string(1000 + total.parameter))
                << total.parameter;
            EXPECT_EQ((total.clearable ? page.Label2[total.index] : page.Label1[total.index]).Caption.get(),
                      total.caption);
        }
    }
}

TEST(FrmTotali, ChangedDecimalsReformatTheMoneyAndNoCount) {
    World world;
    world.start();
    world.setBoard(0, 3, 2);
    world.setBoard(0, 164, 150);
    world.setBoard(0, 160, 150);
    auto& page = world.open<FrmTotali>("FrmTotali");
    world.setBoard(0, 3, 1);
    world.run(5000);
    EXPECT_EQ(page.Label3[0].Caption.get(), "15.0");
    EXPECT_EQ(page.Label3[3].Caption.get(), "150");
}

TEST(FrmTotali, MoneyThatComesBeforeTheDecimalsIsNotShown) {
    World world;
    world.start();
    FrmTotali page;
    CurrentBank = 0;
    page.notify(164, 150);
    EXPECT_EQ(page.Label3[0].Caption.get(), "");
    page.notify(160, 7);
    EXPECT_EQ(page.Label3[3].Caption.get(), "7");
    CurrentBank = 1;
    page.notify(160, 8);
    EXPECT_EQ(page.Label3[3].Caption.get(), "7");
}

}  // namespace
}  // namespace kestrel

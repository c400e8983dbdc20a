// Tests of mkcatalogue and of what the build makes with it: the names by which pages and programs know the parameters.
// A name on a wrong number would have a page write into another setting.
#include <algorithm>

#include "catalogue/parameters.h"
#include "catalogue/rows.h"
#include "tool_test.h"
#include "tools/mkcatalogue_command.h"

namespace kestrel::mkcatalogue {
namespace {

TEST(Catalogue, NamesStandForTheBoardsNumbers) {
    EXPECT_EQ(hot_drink::CoolingKind, (Setting{Board::HotDrink, 1153}));
    EXPECT_EQ(CopyOf(hot_drink::CoolingKind), (Setting{Board::HotDrink, 1158}));
    EXPECT_EQ(master::ClockSetYear, (Setting{Board::Master, 243}));
    EXPECT_EQ(sector::SectorPrice[47], (Setting{Board::Sector, 48}));
    EXPECT_EQ(CopyOf(sector::SectorPrice[47]), (Setting{Board::Sector, 263}));
    EXPECT_EQ(CopyOf(master::Price).back(), (Setting{Board::Master, 75}));
    EXPECT_EQ(master::CoinCount.first(9).back().number, 185);
    EXPECT_EQ(master::Discount.indexOf(117), 29);
    EXPECT_EQ(master::Discount.indexOf(118), -1);
    EXPECT_EQ(master::Discount.indexOf(87), -1);
    for (const int outside : {-1, 30}) EXPECT_THROW(master::Price[outside], std::out_of_range);
    for (const int count : {0, 31}) EXPECT_THROW(master::Price.first(count), std::out_of_range);
    EXPECT_THROW(CopyOf(master::Command), std::logic_error);
}

TEST(Catalogue, EveryRowIsThereAtRunTime) {
    const auto row = std::ranges::find(Catalogue(), "tank.offset", &CatalogueRow::name);
    ASSERT_NE(row, Catalogue().end());
    EXPECT_EQ(row->settings.front(), sector::TankOffset);
    EXPECT_EQ(row->firstIndex, CatalogueRow::NoIndex);
    EXPECT_EQ(row->scale, "-5");
    const auto masks = std::ranges::find(Catalogue(), "mask.jug", &CatalogueRow::name);
    ASSERT_NE(masks, Catalogue().end());
    EXPECT_EQ(masks->firstIndex, 0);
    EXPECT_EQ(masks->settings.size(), 4);
    EXPECT_EQ(masks->group, "recipes");
    EXPECT_EQ(row->kind, CatalogueRow::Kind::Setting);
    EXPECT_EQ(row->lowest, 0U);
    EXPECT_EQ(row->highest, 10U);
    EXPECT_EQ(masks->highest, CatalogueRow::NoLimit);
    const auto [options, index] = FindParameter(Board::Sector, sector::SectorOptions.number);
    EXPECT_EQ(options->bits, 0x0FU);
    EXPECT_EQ(ParameterName(Board::Sector, 250), "sector.price[35].copy");
    EXPECT_EQ(ParameterName(Board::Sector, 60), "");
}

class MkcatalogueCommand : public kestrel::testing::ToolTest {
  protected:
    MkcatalogueCommand() : ToolTest(mkcatalogue::run) {}

    const std::string header = "number\tname\tcopy\tunit\tscale\tkind\trange\tgroup\tmeaning\n";
};

TEST_F(MkcatalogueCommand, ABadCatalogueLeavesTheOldFilesAndMistakesAreToldWithTheirPlaces) {
    const std::string good =
        write("hot_drink.tsv", header + "1\tset.point\t2\t\t/10\tsetting\t5..9\tstatus\tsay \"when\"\n");
    const std::string bad = write("sector.tsv", header + "0\ta\t\t\t\treport\tbits 3-2\tstatus\tm\n");
    ASSERT_EQ(run({good, "--out", path("")}), 0) << err.str();
    const std::string before = content("parameters.h");
    EXPECT_NE(before.find("SetPoint = Setting{Board::HotDrink, 1, 2};"), std::string::npos) << before;
    EXPECT_NE(content("rows.cpp").find("\"say \\\"when\\\"\""), std::string::npos) << content("rows.cpp");
    EXPECT_EQ(run({good, bad, "--out", path("")}), 1);
    EXPECT_EQ(err.str(),
              bad + ":2: number \"0\" is not within 1 to 32766\n" + bad + ":2: range \"bits 3-2\" names no bits\n");
    EXPECT_EQ(content("parameters.h"), before);
    EXPECT_EQ(run({good, "--out", path("no/such")}), 1);
    expectBadUsage({"", "a.tsv", "--out x", "a.tsv --out", "--fast a.tsv --out x"});
    EXPECT_EQ(run({"--help"}), 0);
}

}  // namespace
}  // namespace kestrel::mkcatalogue

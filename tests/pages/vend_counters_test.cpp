// The pages of counters: each number under its own name, no other page's numbers, and words that stay as drawn.
// Blocks are counted out here once more, as the boards number them.
#include "pages/sales/vend_counters.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

#include "support/bare_mirror.h"
#include "support/layouts.h"
#include "support/world.h"

namespace kestrel::testing {
namespace {

using Labels = ControlArray<Tally, 48>;

struct Block {
    const char* page;
    const CounterDesign& design;
    int bank;
    int first;
    int count;
    Labels VendCounters::*labels;
    int firstLabel;
};

const Block Blocks[] = {
    {"FrmBattute", FrmBattute, 1, 1216, 18, &VendCounters::Label3, 0},
    {"FrmBattute", FrmBattute, 2, 71, 48, &VendCounters::Label4, 0},
    {"FrmBattute", FrmBattute, 0, 169, 4, &VendCounters::Label1, 30},
    {"FrmGratis", FrmGratis, 1, 1234, 18, &VendCounters::Label3, 0},
    {"FrmGratis", FrmGratis, 2, 119, 48, &VendCounters::Label4, 0},
    {"FrmBricco", FrmBricco, 1, 1252, 18, &VendCounters::Label2, 0},
    {"FrmProva", FrmProva, 1, 1270, 18, &VendCounters::Label3, 0},
    {"FrmProva", FrmProva, 2, 167, 48, &VendCounters::Label4, 0},
    {"FrmMonete", FrmMonete, 0, 177, 9, &VendCounters::Label2, 0},
};

/// Whether any figure of the page reads so.
bool showsValue(Window& page, const std::string& text) {
    bool found = false;
    eachControl(page.Arrange(), [&](const Control& control) {
        const auto* label = dynamic_cast<const Label*>(&control);
        found = found || (label && label->role == Label::Role::Value && label->Caption.get() == text);
    });
    return found;
}

TEST(VendCounters, WithAllPagesOpenEachNumberStandsInItsOwnRowOfItsOwnPage) {
    StartedWorld world({{0, 3, 2}});
    const auto valueOf = [](const Block& block, int i) { return static_cast<std::uint32_t>(block.first * 20 + i); };
    for (const Block& block : Blocks) world.setBoards(block.bank, block.first, block.count, valueOf(block, 0));
    for (const char* name : {"FrmTotali", "FrmBattute", "FrmGratis", "FrmBricco", "FrmProva", "FrmMonete"})
        ShowPage(name);
    ASSERT_TRUE(world.settle());
    for (const Block& block : Blocks) {
        auto& page = dynamic_cast<VendCounters&>(*FindLoadedPage(block.page));
        for (int i = 0; i < block.count; ++i)
            EXPECT_EQ((page.*block.labels)[block.firstLabel + i].Caption.get(), std::to_string(valueOf(block, i)))
                << block.page << " " << block.first + i;
    }
}

TEST(SalesPages, EachReadsAgainEveryFifteenSeconds) {
    std::set<std::tuple<std::string, int, int>> cases = {{"FrmTotali", 0, 160}, {"FrmMDBaudit", 0, 198}};
    for (const Block& block : Blocks) cases.emplace(block.page, block.bank, block.first + block.count - 1);
    for (const auto& [name, bank, parameter] : cases) {
        StartedWorld world;
        auto& page = world.open<Page>(name);
        world.setBoard(bank, parameter, 4711);
        world.run(9'000);
        EXPECT_FALSE(showsValue(page, "4711")) << name;
        world.run(13'000);
        EXPECT_TRUE(showsValue(page, "4711")) << name;
        EXPECT_EQ(ParamTable(bank, parameter).Watchers, 1);
    }
}

TEST(VendCounters, AFrameIsAddedUpWhenItsLastCounterHasComeAndMeasuredByItsHighest) {
    BareMirror mirror;
    VendCounters& page = mirror.load<VendCounters>(FrmProva);
    const auto sum = [&] { return page.sum(CounterBlock::Kind::Selection).Caption.get(); };
    for (int i = 0; i < 18; ++i) {
        EXPECT_EQ(sum(), "") << "of some of them alone it would be taken for that of all";
        mirror.arrive(1, 1270 + i, 0);
        mirror.arrive(2, 167 + i, 4'000'000'000);
    }
    EXPECT_EQ(sum(), "0");
    EXPECT_EQ(page.Label3[3].Share, 0);
    mirror.arrive(1, 1273, 3'000'000'000);
    mirror.arrive(1, 1274, 4'000'000'000);
    EXPECT_EQ(sum(), "7000000000");
    EXPECT_EQ(page.Label3[3].Share, 0.75);
    EXPECT_EQ(page.Label3[4].Share, 1);
    EXPECT_EQ(page.sum(CounterBlock::Kind::Sector).Caption.get(), "");
}

TEST(VendCounters, BoardsThatAreNotThereLeaveTheirRowsBlank) {
    StartedWorld world(World::still(true, false), {{1, 1287, 3}});
    auto& page = world.open<VendCounters>("FrmProva");
    EXPECT_EQ(page.Label3[17].Caption.get(), "3");
    for (Label& label : page.Label4) EXPECT_EQ(label.Caption.get(), "");
}

}  // namespace
}  // namespace kestrel::testing

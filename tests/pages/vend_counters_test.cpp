// The pages of counters: each number under its own name, no other page's numbers, and words that stay as drawn.
// Blocks are counted out here once more, as the boards number them.
#include "pages/sales/vend_counters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <tuple>

#include "pages/sales/frm_cancella.h"
#include "shell/language_files.h"
#include "support/arrivals.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::Bench;
using testing::tell;
using testing::World;

using Labels = ControlArray<Label, 48>;

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

TEST(VendCounters, WithAllPagesOpenEachNumberStandsInItsOwnRowOfItsOwnPage) {
    World world;
    world.start();
    const auto valueOf = [](const Block& block, int i) { return static_cast<std::uint32_t>(block.first * 20 + i); };
    for (const Block& block : Blocks)
        for (int i = 0; i < block.count; ++i) world.setBoard(block.bank, block.first + i, valueOf(block, i));
    world.setBoard(0, 3, 2);
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

TEST(VendCounters, OtherBanksAndNeighboursChangeNothing) {
    for (const Block& block : Blocks) {
        Bench bench;
        auto& page = bench.load<VendCounters>(block.design);
        const auto filled = [&] {
            int count = 0;
            for (Labels VendCounters::*labels :
                 {&VendCounters::Label1, &VendCounters::Label2, &VendCounters::Label3, &VendCounters::Label4})
                for (Label& label : page.*labels)
                    count += label.role == Label::Role::Value && !label.Caption.get().empty() ? 1 : 0;
            return count;
        };
        for (int bank = 0; bank < 3; ++bank) {
            if (bank == block.bank) continue;
            tell(page, bank, block.first, 7);
            tell(page, bank, block.first + block.count - 1, 7);
        }
        tell(page, block.bank, block.first - 1, 7);
        tell(page, block.bank, block.first + block.count, 7);
        EXPECT_EQ(filled(), 0) << block.page << " " << block.bank;
        tell(page, block.bank, block.first + block.count - 1, 4294967295U);
        EXPECT_EQ((page.*block.labels)[block.firstLabel + block.count - 1].Caption.get(), "4294967295");
        EXPECT_EQ(filled(), 1);
    }
}

bool anyLabelSays(const Layout& layout, const std::string& text) {
    const auto* label = dynamic_cast<const Label*>(layout.control);
    return (label && label->Caption.get() == text) ||
           std::any_of(layout.children.begin(), layout.children.end(),
                       [&](const Layout& child) { return anyLabelSays(child, text); });
}

TEST(SalesPages, EachReadsAgainEveryFifteenSeconds) {
    std::set<std::tuple<std::string, int, int>> cases = {{"FrmTotali", 0, 160}, {"FrmMDBaudit", 0, 198}};
    for (const Block& block : Blocks) cases.emplace(block.page, block.bank, block.first + block.count - 1);
    for (const auto& [name, bank, parameter] : cases) {
        World world;
        world.start();
        auto& page = world.open<Page>(name);
        world.setBoard(bank, parameter, 4711);
        world.run(9'000);
        EXPECT_FALSE(anyLabelSays(page.Arrange(), "4711")) << name;
        world.run(13'000);
        EXPECT_TRUE(anyLabelSays(page.Arrange(), "4711")) << name;
        EXPECT_EQ(ParamTable(bank, parameter).Watchers, 1);
    }
}

TEST(VendCounters, GrowAsTheMachineSellsAndStartAnewWhenClearingIsOrdered) {
    auto options = World::still();
    options.moving = true;
    World world(options);
    world.start();
    auto& page = world.open<VendCounters>("FrmBattute");
    const auto sold = [&] {
        int count = 0;
        for (int k = 0; k < 18; ++k) count += std::stoi(page.Label3[k].Caption);
        for (int s = 0; s < 48; ++s) count += std::stoi(page.Label4[s].Caption);
        return count;
    };
    const int before = sold();
    world.run(10 * 60'000);
    EXPECT_GT(sold(), before + 5);
    world.platform.answers = {Message::Answer::Yes};
    world.open<FrmCancella>("FrmCancella").cmdCancella[0].UserClick();
    world.run(20'000);
    EXPECT_LE(sold(), 1);
}

TEST(VendCounters, BoardsThatAreNotThereLeaveTheirRowsBlank) {
    auto options = World::still();
    options.sectorBoard = false;
    World world(options);
    world.start();
    world.setBoard(1, 1287, 3);
    auto& page = world.open<VendCounters>("FrmProva");
    EXPECT_EQ(page.Label3[17].Caption.get(), "3");
    for (Label& label : page.Label4) EXPECT_EQ(label.Caption.get(), "");
}

TEST(VendCounters, PaidVendsAndCoinsAreTranslatedTheOthersStayAsDrawn) {
    World world;
    world.start();
    for (const char* name : {"FrmBattute", "FrmGratis", "FrmBricco", "FrmProva", "FrmMonete"}) ShowPage(name);
    LoadLanguage("English.lng");
    for (Page* page : LoadedPages()) page->Form_Activate();
    const auto page = [](const char* name) -> VendCounters& {
        return dynamic_cast<VendCounters&>(*FindLoadedPage(name));
    };
    auto& paid = page("FrmBattute");
    auto& free = page("FrmGratis");
    auto& jug = page("FrmBricco");
    auto& test = page("FrmProva");
    auto& coins = page("FrmMonete");
    const std::pair<const Property<std::string>*, const char*> texts[] = {
        {&paid.Caption, "Paid vends"},
        {&paid.Frame1.Caption, "Beverages"},
        {&paid.Frame2[0].Caption, "Sectors"},
        {&paid.Frame3.Caption, "Counters"},
        {&paid.Label1[17].Caption, "Bev. 18"},
        {&paid.Label2[0].Caption, "Sect. 11"},
        {&paid.Label2[47].Caption, "Sect. 68"},
        {&paid.Label11[33].Caption, "Preselection 4"},
        {&free.Caption, "Gratis"},
        {&free.Frame1.Caption, "Bevande"},
        {&free.Frame2[0].Caption, "Settori"},
        {&free.Label1[17].Caption, "Bev. 18"},
        {&free.Label2[0].Caption, "Set. 68"},
        {&jug.Caption, "Bricco"},
        {&jug.Frame1.Caption, "Bevande"},
        {&test.Caption, "Prova"},
        {&test.Label2[20].Caption, "Set. 68"},
        {&coins.Caption, "Coins"},
        {&coins.Label1[8].Caption, "Coin counter 9"},
        {&coins.Label1[9].Caption, "Contatore moneta 10"},
    };
    for (const auto& [property, text] : texts) EXPECT_EQ(property->get(), text);
}

}  // namespace
}  // namespace kestrel

// What was sold: totals, counters, the audit of MDB, and the clearing of all of it.
// A number in the wrong row is believed, and what is cleared by mistake is gone.
#include <gtest/gtest.h>

#include <set>
#include <tuple>

#include "link/identification.h"
#include "pages/sales/frm_cancella.h"
#include "pages/sales/frm_mdb_audit.h"
#include "pages/sales/frm_totali.h"
#include "pages/sales/vend_counters.h"
#include "support/bare_mirror.h"
#include "support/layouts.h"
#include "support/world.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

struct Total {
    int parameter;
    Label& label;
    bool money;
};

TEST(FrmTotali, ShowsEveryTotalInItsRowAndMoneyInTheBoardsDecimalsWhenTheyCome) {
    BareMirror mirror;
    auto& page = mirror.load<FrmTotali>();
    const Total totals[] = {{164, page.Label3[0], true},  {165, page.Label3[1], true},  {166, page.Label3[2], true},
                            {160, page.Label3[3], false}, {161, page.Label3[4], false}, {167, page.Label3[5], false},
                            {162, page.Label3[6], false}, {168, page.Label3[7], false}, {169, page.Label3[8], false},
                            {163, page.Label4[0], true},  {159, page.Label4[1], false}};
    const auto rawOf = [](const Total& total) { return 1000U * static_cast<unsigned>(total.parameter); };
    for (const Total& total : totals) {
        mirror.arrive(0, total.parameter, rawOf(total));
        EXPECT_EQ(total.label.Caption.get(), total.money ? "" : std::to_string(rawOf(total))) << total.parameter;
        mirror.arrive(1, total.parameter, 7);
    }
    for (const unsigned decimals : {0U, 1U, 2U, 3U, 6U}) {
        mirror.arrive(0, 3, decimals);
        for (const Total& total : totals)
            EXPECT_EQ(total.label.Caption.get(), written(rawOf(total), total.money ? decimals % 4 : 0))
                << total.parameter;
        mirror.arrive(0, 163, 5);
        EXPECT_EQ(page.Label4[0].Caption.get(), written(5, decimals % 4));
        mirror.arrive(0, 163, 163'000);
    }
    mirror.arrive(0, 3, 2);
    auto& second = mirror.load<FrmTotali>();
    mirror.arrive(0, 164, 1234);
    EXPECT_EQ(second.Label3[0].Caption.get(), "12.34") << "known to the mirror before this page was told of them";
}

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

TEST(FrmMDBaudit, ShowsRawAmountsWhateverTheDecimalsAndClearsThemOnYesAlone) {
    using enum Message::Answer;
    for (const auto answer : {No, Cancel, Yes}) {
        StartedWorld world({{0, 3, 2}});
        world.setBoards(0, 193, 6, 1250);
        auto& page = world.open<FrmMDBaudit>("FrmMDBaudit");
        for (int i = 0; i < 6; ++i) EXPECT_EQ(page.Label2[i].Caption.get(), std::to_string(1250 + i));
        world.platform.messages.clear();
        world.platform.answers = {answer};
        const Writes writes = writesOf(world, [&] {
            page.Command1.UserClick();
            EXPECT_EQ(page.Command1.Enabled, answer != Yes);
        });
        ASSERT_EQ(world.platform.messages.size(), 1U);
        const Message& box = world.platform.messages[0];
        EXPECT_EQ(box.text, "I dati saranno cancellati definitivamente. Continuare?");
        EXPECT_EQ(box.title, "Cancella i dati");
        EXPECT_EQ(box.buttons, Message::Buttons::YesNo);
        EXPECT_EQ(box.icon, Message::Icon::Exclamation);
        const Writes all = {{0, 193, 0}, {0, 194, 0}, {0, 195, 0}, {0, 196, 0}, {0, 197, 0}, {0, 198, 0}};
        EXPECT_EQ(writes, answer == Yes ? all : Writes{});
        EXPECT_EQ(page.Label2[5].Caption.get(), answer == Yes ? "0" : "1255");
        EXPECT_TRUE(page.Command1.Enabled) << "the board has answered";
    }
}

TEST(FrmMDBaudit, TheButtonComesBackWithTheFirstAmountAlone) {
    BareMirror mirror;
    auto& page = mirror.load<FrmMDBaudit>();
    page.Command1.Enabled = false;
    mirror.arrive(0, 194, 1);
    mirror.arrive(0, 198, 1);
    EXPECT_FALSE(page.Command1.Enabled);
    ParamFlags(0, 193) |= flag::Valid;
    mirror.arrive(2, 17, 1);
    EXPECT_TRUE(page.Command1.Enabled) << "whatever number comes";
    mirror.arrive(1, 193, 77);
    EXPECT_EQ(page.Label2[0].Caption.get(), "");
}

using enum Message::Answer;

constexpr const char* Done = "Comando di cancellazione inviato";

struct Clearing : ::testing::Test {
    StartedWorld world;
    FrmCancella& page = world.open<FrmCancella>("FrmCancella");

    void click(int button) {
        world.platform.answers = {Yes};
        page.cmdCancella[button].UserClick();
    }
};

TEST(FrmCancella, TheSecondButtonComesWithRevision26) {
    for (const int revision : {25, 26, 30}) {
        BareMirror mirror;
        SetBoardRevision(revision);
        auto& page = mirror.load<FrmCancella>();
        EXPECT_TRUE(page.cmdCancella[0].usable());
        EXPECT_EQ(page.cmdCancella[1].usable(), revision >= 26);
        EXPECT_EQ(page.Frame1.Height, revision >= 26 ? 2895 : 2175);
        EXPECT_FALSE(page.lbrInfo.Visible);
        EXPECT_EQ(page.lbrInfo.PositionMax, 20);
    }
}

TEST_F(Clearing, OrdersOnceShowsTwoSecondsAndKeepsTheSecondButton) {
    for (const int button : {0, 1}) {
        WriteLog log(world);
        CurrentBank = 1;  // where the scan may stand when the user acts
        click(button);
        EXPECT_EQ(world.platform.messages.back().detail,
                  button == 1 ? "Scelto: cancella dati non azzerabili" : "Scelto: Cancella dati");
        EXPECT_EQ(page.lblInfo.Caption.get(), "") << "the next command wipes the message";
        EXPECT_TRUE(page.lbrInfo.Visible);
        EXPECT_FALSE(page.cmdCancella[button].Enabled);
        EXPECT_TRUE(page.cmdCancella[1 - button].Enabled) << "the other button stays as it was";
        world.run(1'950);
        EXPECT_EQ(page.lbrInfo.Position, 19);
        EXPECT_EQ(page.lblInfo.Caption.get(), "");
        world.run(100);
        EXPECT_EQ(page.lblInfo.Caption.get(), Done);
        EXPECT_TRUE(page.cmdCancella[0].Enabled);
        EXPECT_EQ(page.cmdCancella[1].Enabled, button == 0) << "the second button is not given back";
        world.run(5'000);
        EXPECT_EQ(page.lbrInfo.Position, 20);
        EXPECT_EQ(log.take(), (Writes{{0, 4, button == 0 ? 1U : 7U}}));
    }
    page.Form_Activate();
    EXPECT_EQ(page.lblInfo.Caption.get(), "") << "coming back to the page wipes the message";
    page.UserClose();
    EXPECT_TRUE(world.open<FrmCancella>("FrmCancella").cmdCancella[1].usable());
}

TEST_F(Clearing, ThePageClosesFromItsOwnButtonAlsoInTheMiddleOfARun) {
    ShowPage("FrmTotali");
    click(0);
    world.run(500);
    page.mnuClose.UserClick();
    world.letActsIn();
    EXPECT_EQ(FindLoadedPage("FrmCancella"), nullptr) << "a click that waits behind this one must find no page";
    EXPECT_EQ(page.mnuClose.Caption.get(), "Close") << "the handler still runs on the page";
    page.mnuClose.UserClick();
    world.run(10);
    EXPECT_NE(FindLoadedPage("FrmTotali"), nullptr);
    world.run(5'000);
}

TEST_F(Clearing, ItsOwnButtonLetsTheCommandGoOutFirst) {
    WriteLog log(world);
    click(0);
    page.mnuClose.UserClick();
    EXPECT_EQ(FindLoadedPage("FrmCancella"), &page);
    world.run(500);
    EXPECT_EQ(FindLoadedPage("FrmCancella"), nullptr);
    EXPECT_EQ(log.take(), (Writes{{0, 4, 1}}));
}

}  // namespace
}  // namespace kestrel::testing

// The list of changes of a run, and what puts one back.
// A mistake here and a machine gets a value that nobody wanted, or a technician cannot tell what he changed.
#include <gtest/gtest.h>

#include "link/history.h"
#include "pages/beverage/frm_dosi.h"
#include "pages/machine/frm_opzioni.h"
#include "pages/payment/frm_prezzi.h"
#include "shell/put_back.h"
#include "support/world.h"

namespace kestrel::testing {
namespace {

struct Past : ::testing::Test {
    StartedWorld world{{0, 3, 2}, {0, 18, 70}, {0, 48, 70}};

    static std::string list() {
        std::string text;
        for (const PastChange& each : PastChanges())
            text += (text.empty() ? "" : "; ") + each.page + ", " + each.control + ": " + each.before + " > " +
                    each.now + " " + "cwrdnu"[static_cast<int>(each.fate)] + (each.putsBack > 0 ? "!" : "") +
                    (IsPutBack(each) ? "-" : "");
        return text;
    }
    void putBackLast() {
        PutBackLast();
        for (int waited = 0; waited < 15'000 && IsPuttingBack(); waited += 50) world.run(50);
        world.settle();
    }
};

TEST_F(Past, IsListedByItsNameOnThePageWithBothFiguresAndItsFate) {
    auto& page = world.open<FrmPrezzi>("FrmPrezzi");
    page.HScroll1[2].UserMove(71 - 32768);
    world.letActsIn();
    EXPECT_EQ(list(), "FrmPrezzi, Prezzo 3: 0.70 > 0.71 w");
    page.HScroll1[2].UserMove(72 - 32768);
    world.settle();
    EXPECT_EQ(list(), "FrmPrezzi, Prezzo 3: 0.70 > 0.71 r; FrmPrezzi, Prezzo 3: 0.71 > 0.72 c");
    EXPECT_EQ(PastChanges().front().time.size(), 5U);
    putBackLast();
    EXPECT_EQ(world.board(0, 18), 71U);
    EXPECT_EQ(world.board(0, 48), 71U) << "both copies, as by hand";
    putBackLast();
    EXPECT_EQ(world.board(0, 18), 70U);
    putBackLast();
    EXPECT_EQ(world.board(0, 18), 70U) << "there is no more";
    EXPECT_EQ(list(),
              "FrmPrezzi, Prezzo 3: 0.70 > 0.71 r-; FrmPrezzi, Prezzo 3: 0.71 > 0.72 c-; "
              "FrmPrezzi, Prezzo 3: 0.72 > 0.71 c!; FrmPrezzi, Prezzo 3: 0.71 > 0.70 c!");
    PutBack(4);
    world.run(5000);
    EXPECT_EQ(world.board(0, 18), 71U) << "what was put back can be put back itself";
    EXPECT_TRUE(world.platform.messages.empty());
}

TEST_F(Past, IsPutBackOnAPageThatWasClosedMeanwhile) {
    auto& page = world.open<FrmPrezzi>("FrmPrezzi");
    page.HScroll1[2].UserMove(71 - 32768);
    world.settle();
    page.UserClose();
    world.run(2000);
    ASSERT_EQ(FindLoadedPage("FrmPrezzi"), nullptr);
    putBackLast();
    EXPECT_EQ(world.board(0, 18), 70U);
    EXPECT_NE(FindLoadedPage("FrmPrezzi"), nullptr);
}

TEST_F(Past, IsNotPutBackWhereTheBoardHasAnotherValueSinceThen) {
    auto& page = world.open<FrmPrezzi>("FrmPrezzi");
    page.HScroll1[2].UserMove(71 - 32768);
    world.settle();
    world.setBoard(0, 18, 99);  // at the machine's own keys; the page still shows 0.71
    putBackLast();
    ASSERT_EQ(world.platform.messages.size(), 1U);
    EXPECT_NE(world.platform.messages[0].text.find("Prezzo 3"), std::string::npos);
    EXPECT_EQ(world.board(0, 18), 99U);
    EXPECT_EQ(PastChanges().size(), 1U);
}

TEST_F(Past, IsPutBackWhereItWasMadeWhateverThePageShowsNow) {
    auto& page = world.open<FrmDosi>("FrmDosi");
    page.Label11[4].UserClick();
    world.settle();
    ScrollBar& delay = page.HScroll1[2];
    const int before = delay.Value;
    ASSERT_TRUE(delay.usable());
    delay.UserMove(before + 5);
    world.settle();
    const PastChange::Record record = PastChanges().at(0).records.at(0);
    page.Label11[1].UserClick();
    world.settle();
    const int elsewhere = delay.Value;
    putBackLast();
    EXPECT_EQ(world.board(record.bank, record.index), static_cast<unsigned>(before));
    EXPECT_EQ(page.HScroll7.Value.get(), 4);
    page.Label11[1].UserClick();
    world.settle();
    EXPECT_EQ(delay.Value.get(), elsewhere) << "the selection that was shown meanwhile keeps its own";
}

TEST_F(Past, KnowsEveryKindOfSettingAndNothingElse) {
    auto& page = world.open<FrmOpzioni>("FrmOpzioni");
    const bool wasOn = page.SwitchX1[0].Active;
    const std::string number = page.Text1[0].Text;
    const int language = page.SlswitchX1.Position;
    page.SwitchX1[0].UserClick();
    page.Text1[0].UserType("77");
    page.Text1[0].UserEnter();
    page.Text1[0].UserLeave();  // once more the same
    page.SlswitchX1.UserMove(language == 0 ? 1 : 0);
    world.settle();
    ASSERT_EQ(PastChanges().size(), 3U) << list();
    EXPECT_TRUE(PastChanges()[0].isTwoState);
    EXPECT_EQ(PastChanges()[1].before, number) << "and not what was typed on the way";
    for (int i = 0; i < 3; ++i) putBackLast();
    EXPECT_EQ(page.SwitchX1[0].Active.get(), wasOn);
    EXPECT_EQ(page.Text1[0].Text.get(), number);
    EXPECT_EQ(page.SlswitchX1.Position.get(), language);
    EXPECT_EQ(PastChanges().size(), 6U) << list();
}

TEST_F(Past, OfOtherBoardsStays) {
    auto& page = world.open<FrmPrezzi>("FrmPrezzi");
    page.HScroll1[2].UserMove(71 - 32768);
    world.settle();
    StartAnew();
    PutBack(1);
    world.run(5000);
    EXPECT_EQ(world.platform.messages.size(), 1U);
    EXPECT_EQ(world.board(0, 18), 71U);
}

}  // namespace
}  // namespace kestrel::testing

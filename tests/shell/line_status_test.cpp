// What the window says of the line, and what the pages do: who is there, who is silent, and how old a figure is.
// Half of all trouble with a machine is the cable: a technician must see it before he believes a figure.
#include <gtest/gtest.h>

#include "link/changes.h"
#include "link/silence.h"
#include "pages/payment/frm_prezzi.h"
#include "shell/main_window.h"
#include "support/world.h"

namespace kestrel::testing {
namespace {

using simulator::Board;

constexpr int MachineNumber = 356;

struct LineStatus : ::testing::Test {
    static const std::string& text() { return MDIForm1().Line.Text; }
    static const std::string& alarm() { return MDIForm1().Line.Alarm; }
    static void speakEnglish(World& world) {
        MDIForm1().smnuLingue(1).UserClick();
        world.letActsIn();
    }
};

TEST_F(LineStatus, NamesWhoIsThereAndWhoIsMissing) {
    StartedWorld world(World::still(true, false), {{0, MachineNumber, 104217}, {1, 1203, 24}});
    speakEnglish(world);
    EXPECT_EQ(text(), "/dev/port1  ·  master 2.7  ·  Alder r7  ·  no Cedar");
    EXPECT_EQ(alarm(), "");
    world.open<Page>("FrmOpzioni");
    world.run(1'100);
    EXPECT_EQ(text(), "/dev/port1  ·  master 2.7  ·  Alder 2.4  ·  no Cedar  ·  machine 104217");
    MDIForm1().smnuLingue(0).UserClick();
    world.letActsIn();
    EXPECT_NE(text().find("kein Cedar"), std::string::npos) << "in the language of the pages";
}

TEST_F(LineStatus, TellsASilentBoardAfterThreeSecondsAndGreysWhatItHasTold) {
    StartedWorld world{{0, 3, 2}};
    speakEnglish(world);
    auto& prices = world.open<FrmPrezzi>("FrmPrezzi");
    auto& selections = world.open<Page>("FrmAssSel");
    const auto isOld = [&] { return prices.Label1[0].standing() == Standing::Old; };
    for (const Board board : {Board::Master, Board::HotDrink}) {
        world.machine.setBoardSilent(board, true);
        prices.HScroll1[30].UserMove(-32700);
        ShowPage("FrmTemperatura");
        world.run(2'000);
        EXPECT_EQ(alarm(), "") << "one lost reply is no silence";
        EXPECT_FALSE(isOld());
        world.run(3'000);
        EXPECT_NE(alarm().find(board == Board::Master ? "no answer for " : "Alder: no answer for "), std::string::npos);
        EXPECT_TRUE(isOld()) << "a line that waits for one board hears none";
        EXPECT_EQ(prices.oldSince(), "10:00");
        EXPECT_FALSE(selections.oldSince().empty());
        world.machine.setBoardSilent(board, false);
        ASSERT_TRUE(world.settle());
        world.run(1'100);
        EXPECT_EQ(alarm(), "");
        EXPECT_FALSE(isOld());
        EXPECT_EQ(prices.oldSince(), "");
        UnloadPage(*FindLoadedPage("FrmTemperatura"));
    }
}

TEST_F(LineStatus, CountsABoardThatIsSilentWhileAnotherAnswersByItself) {
    StartedWorld world;
    for (int second = 0; second < 5; ++second) {
        for (const int bank : {0, 1}) NoteAsked(bank);
        NoteHeard(0);
        world.run(1'000);
        EXPECT_EQ(OldSince(0), "");
        EXPECT_EQ(OldSince(1).empty(), second < SilenceSeconds - 1) << second;
    }
    EXPECT_EQ(SecondsWithoutAnswer(1), 5);
    world.run(5'000);
    EXPECT_EQ(SecondsWithoutAnswer(1), 0) << "nobody asks it any more";
}

TEST_F(LineStatus, TellsAnInterruptionAtOnceAndTheChangesThatAreHeld) {
    StartedWorld world{{0, 3, 2}};
    speakEnglish(world);
    auto& page = world.open<FrmPrezzi>("FrmPrezzi");
    world.machine.portLost();
    world.run(50);
    EXPECT_NE(alarm().find("the line is interrupted"), std::string::npos) << alarm();
    EXPECT_EQ(page.Label1[0].standing(), Standing::Old);
    page.HScroll1[2].UserMove(-32700);
    world.run(2'000);
    EXPECT_NE(alarm().find("changes held: 1"), std::string::npos) << alarm();
    EXPECT_EQ(page.Label1[2].standing(), Standing::Waiting);
    world.machine.portBack();
    world.platform.answers.push_back(Message::Answer::Yes);
    world.run(10'000);
    EXPECT_EQ(alarm(), "");
    EXPECT_EQ(page.Label1[2].standing(), Standing::Confirmed);
    EXPECT_EQ(page.Label1[2].Caption.get(), "0.68");
}

TEST_F(LineStatus, APagesFirstValuesRunUpToAllAndCountOnlyWhatIsAsked) {
    StartedWorld world(World::still(true, false));
    Page& page = ShowPage("FrmPrezzi");
    std::vector<int> seen{page.FirstValues};
    for (int waited = 0; waited < 10'000 && page.FirstValues < Window::AllCame; waited += 40) {
        world.run(40);
        if (page.FirstValues != seen.back()) seen.push_back(page.FirstValues);
    }
    EXPECT_EQ(seen.back(), Window::AllCame);
    EXPECT_GT(seen.size(), 50U);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_EQ(UnsettledRecords(), 0);
    EXPECT_EQ(ShowPage("FrmAssSet").FirstValues, 0) << "the gates alone: the sector board is not there";
    ASSERT_TRUE(world.settle());
    EXPECT_EQ(FindLoadedPage("FrmAssSet")->FirstValues, Window::AllCame);
    EXPECT_EQ(ShowPage("FrmSconti").FirstValues < Window::AllCame, true);
    UnloadPage(*FindLoadedPage("FrmSconti"));
    world.run(3'000);
}

}  // namespace
}  // namespace kestrel::testing

// Every write is what the user meant: none invented, none lost without a word, none late or to another machine.
// On the page of prices: row 2 stands for parameter 18 and its copy 48.
#include <gtest/gtest.h>

#include "link/leaving.h"
#include "link/link_engine.h"
#include "pages/diagnostics/frm_in_out.h"
#include "pages/machine/frm_opzioni.h"
#include "pages/payment/frm_prezzi.h"
#include "platform/outside.h"
#include "shell/windows.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

using simulator::Board;

constexpr int Row = 2, Price = 18, Copy = 48;
constexpr double LinkPass = 1'000;  ///< milliseconds in which all that is due goes out
const Writes BothWrites = {{0, Price, 71}, {0, Copy, 71}};

struct Intents : ::testing::Test {
    StartedWorld world{{0, 3, 2}, {0, Price, 70}, {0, Copy, 70}};
    FrmPrezzi& page = world.open<FrmPrezzi>("FrmPrezzi");
    ScrollBar& bar = page.HScroll1[Row];
    WriteLog log{world};

    void set(int raw) { bar.UserMove(raw - 32768); }
    void silence(bool silent) { world.machine.setBoardSilent(Board::Master, silent); }
    void runUntilExchangeIsOpen() {
        while (Link().LinkIdle) world.platform.step();
    }
    std::vector<Message>& boxes() { return world.platform.messages; }
    void answer(Message::Answer answer) { world.platform.answers.push_back(answer); }
};

TEST_F(Intents, AnActWaitsForTheEndOfAnExchangeAndNoLongerThanItsPatience) {
    for (const bool silent : {false, true}) {
        CurrentBank = 0;
        ParamWatch(Copy);
        silence(silent);
        runUntilExchangeIsOpen();
        set(silent ? 72 : 71);
        const int before = bar.Value;
        EXPECT_TRUE(bar.actWaits());
        world.run(silent ? PatienceMs - 1 : 1);
        EXPECT_EQ(bar.Value, before);
        world.run(silent ? 2 : 30);
        EXPECT_NE(bar.Value, before);
        EXPECT_FALSE(bar.actWaits());
    }
}

TEST_F(Intents, AnEditIsNotOverwrittenByAReplyThatIsOnItsWay) {
    for (const int latency : {0, 16, 400}) {  // the last is longer than an act waits
        world.machine.setLatency(Micros{latency} * 1000);
        for (int raw = 71; raw < 91; ++raw) {
            CurrentBank = 0;
            ParamWatch(Price);
            runUntilExchangeIsOpen();
            world.run(raw % 10);
            set(raw);
            ASSERT_TRUE(world.settle());
            EXPECT_EQ(world.board(0, Price), static_cast<unsigned>(raw));
            EXPECT_EQ(page.Label1[Row].Caption.get(), "0." + std::to_string(raw));
        }
    }
}

TEST_F(Intents, WhatHasNotBeenReadTakesNoAct) {
    ClosePages();
    silence(true);
    auto& anew = dynamic_cast<FrmPrezzi&>(ShowPage("FrmPrezzi"));
    world.run(3'000);
    EXPECT_TRUE(anew.HScroll1[Row].unread() && anew.Switch1.unread() && anew.Label1[Row].unread());
    EXPECT_TRUE(anew.HScroll1[30].Enabled);
    for (const int row : {Row, 30}) anew.HScroll1[row].UserMove(0);
    anew.Switch1.UserMove(1);
    silence(false);
    ASSERT_TRUE(world.settle());
    EXPECT_EQ(log.take(), Writes{});
    EXPECT_FALSE(anew.HScroll1[Row].unread() || anew.Switch1.unread() || anew.Label1[Row].unread());
}

TEST_F(Intents, AChangeThatWasLostIsToldOnItsControlUntilTheUserActsAgain) {
    set(71);
    silence(true);
    runUntilExchangeIsOpen();
    world.run(100);
    silence(false);
    ASSERT_TRUE(world.settle());
    EXPECT_EQ(world.board(0, Price), 70U);
    EXPECT_EQ(world.board(0, Copy), 71U);
    ASSERT_TRUE(bar.notTaken());
    EXPECT_EQ(bar.notTaken()->wanted, "0.71");
    EXPECT_EQ(bar.text(), "0.70");
    set(72);
    ASSERT_TRUE(world.settle());
    EXPECT_FALSE(bar.notTaken());
    EXPECT_EQ(world.board(0, Price), 72U);
}

TEST_F(Intents, ACopyThatWasLostIsToldToo) {
    set(71);
    while (world.board(0, Price) != 71) world.platform.step();
    silence(true);
    world.run(10);
    runUntilExchangeIsOpen();
    world.run(200);
    silence(false);
    ASSERT_TRUE(world.settle());
    EXPECT_EQ(world.board(0, Copy), 70U);
    ASSERT_TRUE(bar.notTaken());
    EXPECT_TRUE(bar.notTaken()->copyOnly);
}

TEST_F(Intents, AfterAnInterruptionTheUserSaysWhatBecomesOfChangesThatWaited) {
    for (const bool send : {false, true}) {
        world.machine.portLost();
        world.run(100);
        set(71);
        world.run(5'000);
        answer(send ? Message::Answer::Yes : Message::Answer::No);
        world.machine.portBack();
        world.run(10'000);
        ASSERT_EQ(boxes().size(), send ? 2U : 1U);
        EXPECT_NE(boxes().back().text.find(page.Caption.get() + ": 1"), std::string::npos);
        EXPECT_EQ(log.take(), send ? BothWrites : Writes{});
        EXPECT_EQ(page.Label1[Row].Caption.get(), send ? "0.71" : "0.70");
    }
}

TEST_F(Intents, AnInterruptionWithoutChangesAsksNothingAndReadsAllAnew) {
    world.machine.portLost();
    world.run(2'000);
    world.setBoard(0, Price, 99);
    world.machine.portBack();
    world.run(10'000);
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(page.Label1[Row].Caption.get(), "0.99");
    EXPECT_EQ(log.take(), Writes{});
}

TEST(AnotherMachine, GetsNothingAndTheProgramStartsAnewWithItWhenTheUserSaysSo) {
    for (const bool anew : {false, true}) {
        StartedWorld world({{0, Price, 70}});
        auto& page = world.open<FrmPrezzi>("FrmPrezzi");
        MachineLine other(World::still(true, false));
        int writes = 0;
        other.machine.onExchange = [&](const simulator::Exchange& exchange) {
            writes += exchange.request.write ? 1 : 0;
        };
        world.machine.portLost();
        world.run(100);
        page.HScroll1[Row].UserMove(71 - 32768);
        world.platform.lines[1] = &other;
        world.platform.answers.push_back(anew ? Message::Answer::Yes : Message::Answer::No);
        world.run(60'000);
        ASSERT_EQ(world.platform.messages.size(), 1U);
        EXPECT_EQ(writes, 0);
        EXPECT_EQ(FindLoadedPage("FrmPrezzi") == nullptr, anew);
        EXPECT_EQ(BoardPresent(2), !anew);
        if (anew) {
            EXPECT_FALSE(world.open<FrmPrezzi>("FrmPrezzi").HScroll1[Row].unread());
            continue;
        }
        other.machine.portLost();
        world.run(100);
        world.platform.lines[1] = &world.line;  // the first machine again
        world.machine.portBack();
        world.platform.answers.push_back(Message::Answer::Yes);
        world.run(30'000);
        EXPECT_EQ(world.board(0, Price), 71U);
    }
}

TEST_F(Intents, AClosingPageWritesWhatIsDueAndItsControlsAreDeadMeanwhile) {
    set(71);
    page.UserClose();
    EXPECT_EQ(FindLoadedPage("FrmPrezzi"), &page);
    EXPECT_FALSE(bar.usable());
    set(75);
    world.run(LinkPass);
    EXPECT_EQ(FindLoadedPage("FrmPrezzi"), nullptr);
    EXPECT_EQ(log.take(), BothWrites);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(Intents, AClosingPageThatIsAskedForAgainStaysOpen) {
    set(71);
    page.UserClose();
    ShowPage("FrmPrezzi");
    world.run(LinkPass + LeavingMs);
    ASSERT_EQ(FindLoadedPage("FrmPrezzi"), &page);
    EXPECT_TRUE(bar.usable());
    EXPECT_EQ(log.take(), BothWrites);
}

TEST_F(Intents, AChangeThatCannotGoOutBeforeItsPageIsGoneIsTold) {
    for (const bool byTheUser : {true, false}) {
        auto& open = world.open<FrmPrezzi>("FrmPrezzi");
        silence(true);
        open.HScroll1[Row].UserMove((byTheUser ? 71 : 72) - 32768);
        byTheUser ? open.UserClose() : ClosePages();
        EXPECT_EQ(FindLoadedPage("FrmPrezzi") != nullptr, byTheUser);
        world.run(byTheUser ? 1'490 : 110);
        EXPECT_EQ(boxes().size(), byTheUser ? 0U : 2U);
        world.run(120 + PatienceMs);
        EXPECT_EQ(FindLoadedPage("FrmPrezzi"), nullptr);
        EXPECT_EQ(boxes().size(), byTheUser ? 1U : 2U);
        silence(false);
        world.run(5'000);
    }
}

TEST_F(Intents, WhatAPageSuspendsOfAnothersChangesAsItGoesWentOutBeforeOrIsTold) {
    auto& options = world.open<FrmOpzioni>("FrmOpzioni");
    log.take();
    for (const bool goesOut : {true, false}) {
        auto& prices = world.open<FrmPrezzi>("FrmPrezzi");  // alone subscribes to the copy of what the other writes
        silence(!goesOut);
        options.SwitchX1[9].UserClick();
        prices.UserClose();
        EXPECT_EQ(FindLoadedPage("FrmPrezzi"), &prices);
        world.run(LeavingMs + 110 + PatienceMs);
        EXPECT_EQ(FindLoadedPage("FrmPrezzi"), nullptr);
        EXPECT_EQ(boxes().size(), goesOut ? 0U : 1U);
        EXPECT_EQ(log.take().size(), goesOut ? 2U : 1U) << "the copy stays behind";
    }
    ASSERT_FALSE(boxes().empty());
    EXPECT_NE(boxes().back().text.find(options.Caption.get() + ": 1"), std::string::npos);
}

TEST_F(Intents, TheEndOfTheProgramWaitsForWhatIsDue) {
    set(71);
    MDIForm_Unload();
    EXPECT_THROW(world.run(LinkPass), ProcessEnded);
    EXPECT_EQ(log.take(), BothWrites);
}

TEST(AbsentBoard, GetsNoFrameAlthoughThePageOfItsTestIsLive) {
    World world;
    world.machine.setBoardSilent(Board::HotDrink, true);
    world.start();
    world.machine.setBoardSilent(Board::HotDrink, false);
    int frames = 0;
    world.machine.onExchange = [&](const simulator::Exchange& exchange) {
        frames += exchange.request.board == Board::HotDrink ? 1 : 0;
    };
    auto& page = dynamic_cast<FrmInOut&>(ShowPage("FrmInOut"));
    world.run(5'000);
    page.Command1.UserClick();
    world.run(20'000);
    EXPECT_EQ(frames, 0);
    EXPECT_EQ(world.board(2, 285), 60U) << "the other board is served";
}

}  // namespace
}  // namespace kestrel::testing

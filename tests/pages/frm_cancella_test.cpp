// The page that clears: it asks first, writes one command, shows two seconds, and gives back one button only.
// What the machine was told is seen on the wire.
#include "pages/sales/frm_cancella.h"

#include <gtest/gtest.h>

#include "support/arrivals.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::Bench;
using testing::World;
using testing::Writes;
using enum Message::Answer;

constexpr const char* Done = "Cancellazione terminata";

TEST(FrmCancella, TheSecondButtonComesWithRevision26) {
    for (const int revision : {25, 26, 30}) {
        Bench bench;
        SetBoardRevision(revision);
        auto& page = bench.load<FrmCancella>();
        EXPECT_TRUE(page.cmdCancella[0].usable());
        EXPECT_EQ(page.cmdCancella[1].usable(), revision >= 26);
        EXPECT_EQ(page.Frame1.Height, revision >= 26 ? 2895 : 2175);
        EXPECT_FALSE(page.lbrInfo.Visible);
        EXPECT_EQ(page.lbrInfo.PositionMax, 20);
    }
}

TEST(FrmCancella, NothingHappensWithoutYes) {
    for (const auto answer : {No, Cancel, Ok}) {
        World world;
        world.start();
        auto& page = world.open<FrmCancella>("FrmCancella");
        world.platform.messages.clear();
        world.platform.answers = {answer};
        EXPECT_EQ(writesOf(world, [&] { page.cmdCancella[0].UserClick(); }), Writes{});
        ASSERT_EQ(world.platform.messages.size(), 1U);
        EXPECT_EQ(world.platform.messages[0].text, "I dati saranno cancellati definitivamente. Continuare?");
        EXPECT_EQ(world.platform.messages[0].title, "Cancella i dati");
        world.run(5'000);
        EXPECT_FALSE(page.lbrInfo.Visible);
        EXPECT_TRUE(page.cmdCancella[0].Enabled);
        EXPECT_EQ(page.lblInfo.Caption.get(), "");
    }
}

TEST(FrmCancella, YesOrdersTheClearingAndTheBarTakesTwoSeconds) {
    for (const int button : {0, 1}) {
        World world;
        world.start();
        auto& page = world.open<FrmCancella>("FrmCancella");
        world.platform.answers = {Yes, Yes};
        Writes writes;
        world.machine.onExchange = [&](const simulator::Exchange& exchange) {
            if (exchange.request.write) writes.push_back({0, exchange.parameter, exchange.value});
        };
        EXPECT_EQ(page.cmdCancella[0].Caption.get(), "Cancella dati");
        EXPECT_EQ(page.cmdCancella[1].Caption.get(), "cancella dati non azzerabili");
        CurrentBank = 1;  // where the scan may stand when the user acts
        page.cmdCancella[button].UserClick();
        EXPECT_TRUE(page.lbrInfo.Visible);
        EXPECT_FALSE(page.cmdCancella[button].Enabled);
        EXPECT_TRUE(page.cmdCancella[1 - button].Enabled) << "the other button stays as it was";
        world.run(1'950);
        EXPECT_EQ(page.lbrInfo.Position, 19);
        EXPECT_EQ(page.lblInfo.Caption.get(), "");
        world.run(100);
        EXPECT_EQ(page.lbrInfo.Position, 20);
        EXPECT_EQ(page.lblInfo.Caption.get(), Done);
        EXPECT_TRUE(page.cmdCancella[0].Enabled);
        EXPECT_EQ(page.cmdCancella[1].Enabled, button == 0) << "the second button is not given back";
        world.run(5'000);
        EXPECT_EQ(page.lbrInfo.Position, 20);
        EXPECT_EQ(writes, (Writes{{0, 4, button == 0 ? 1U : 7U}})) << "one command, once";
        page.Form_Activate();
        EXPECT_EQ(page.lblInfo.Caption.get(), "") << "coming back to the page wipes the message";
        page.lblInfo.Caption = Done;
        page.cmdCancella[0].UserClick();
        EXPECT_EQ(page.lblInfo.Caption.get(), "") << "and so does the next command";
        page.UserClose();
        EXPECT_TRUE(world.open<FrmCancella>("FrmCancella").cmdCancella[1].usable());
    }
}

TEST(FrmCancella, ASecondCommandStartsTheBarAnew) {
    World world;
    world.start();
    auto& page = world.open<FrmCancella>("FrmCancella");
    world.platform.answers = {Yes, Yes};
    page.cmdCancella[0].UserClick();
    world.run(1'050);
    EXPECT_EQ(page.lbrInfo.Position, 10);
    const Writes writes = writesOf(world, [&] {
        page.cmdCancella[1].UserClick();
        EXPECT_EQ(page.lbrInfo.Position, 0);
        world.run(1'900);
        EXPECT_EQ(page.lblInfo.Caption.get(), "");
        world.run(200);
        EXPECT_EQ(page.lblInfo.Caption.get(), Done);
    });
    EXPECT_EQ(writes, (Writes{{0, 4, 7}}));
}

TEST(FrmCancella, TheEndIsReportedEvenWhenTheMachineIsSilent) {
    World world;
    world.start();
    auto& page = world.open<FrmCancella>("FrmCancella");
    world.machine.setBoardSilent(simulator::Board::Master, true);
    world.platform.answers = {Yes};
    page.cmdCancella[0].UserClick();
    world.run(2'050);
    EXPECT_EQ(page.lblInfo.Caption.get(), Done);
}

TEST(FrmCancella, ClosesFromItsOwnButtonAlsoInTheMiddleOfARun) {
    World world;
    world.start();
    ShowPage("FrmTotali");
    auto& page = world.open<FrmCancella>("FrmCancella");
    EXPECT_EQ(page.mnuClose.Caption.get(), "Close");
    world.platform.answers = {Yes};
    page.cmdCancella[0].UserClick();
    world.run(500);
    page.mnuClose.UserClick();
    EXPECT_EQ(FindLoadedPage("FrmCancella"), nullptr) << "a click that waits behind this one must find no page";
    EXPECT_EQ(page.mnuClose.Caption.get(), "Close") << "the handler still runs on the page";
    page.mnuClose.UserClick();
    world.run(10);
    EXPECT_NE(FindLoadedPage("FrmTotali"), nullptr);
    world.run(5'000);
}

TEST(FrmCancella, APageThatWasClosedOtherwiseTakesNoOtherWithIt) {
    World world;
    world.start();
    auto& page = world.open<FrmCancella>("FrmCancella");
    page.mnuClose.UserClick();
    page.UserClose();
    EXPECT_EQ(FindLoadedPage("FrmCancella"), nullptr);
    ShowPage("FrmCancella");
    world.run(1'000);
    EXPECT_NE(FindLoadedPage("FrmCancella"), nullptr) << "opened anew since";
}

}  // namespace
}  // namespace kestrel

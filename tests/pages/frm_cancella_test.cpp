// The page that clears: it asks first, writes one command, shows two seconds, and gives back one button only.
// What the machine was told is seen on the wire.
#include "pages/sales/frm_cancella.h"

#include <gtest/gtest.h>

#include "link/identification.h"
#include "support/bare_mirror.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

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

TEST_F(Clearing, DoesNothingWithoutYes) {
    for (const auto answer : {No, Cancel, Ok}) {
        world.platform.messages.clear();
        world.platform.answers = {answer};
        const int button = answer == No ? 1 : 0;
        EXPECT_EQ(writesOf(world, [&] { page.cmdCancella[button].UserClick(); }), Writes{});
        ASSERT_EQ(world.platform.messages.size(), 1U);
        EXPECT_EQ(world.platform.messages[0].text, "I dati saranno cancellati definitivamente. Continuare?");
        EXPECT_EQ(world.platform.messages[0].title, "Cancella i dati");
        EXPECT_EQ(world.platform.messages[0].detail,
                  button == 1 ? "Scelto: cancella dati non azzerabili" : "Scelto: Cancella dati");
        world.run(5'000);
        EXPECT_FALSE(page.lbrInfo.Visible);
        EXPECT_TRUE(page.cmdCancella[0].Enabled);
        EXPECT_EQ(page.lblInfo.Caption.get(), "");
    }
}

TEST_F(Clearing, OrdersOnceShowsTwoSecondsAndKeepsTheSecondButton) {
    for (const int button : {0, 1}) {
        WriteLog log(world);
        CurrentBank = 1;  // where the scan may stand when the user acts
        click(button);
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

TEST_F(Clearing, APageThatWasClosedOtherwiseTakesNoOtherWithIt) {
    page.mnuClose.UserClick();
    page.UserClose();
    EXPECT_EQ(FindLoadedPage("FrmCancella"), nullptr);
    ShowPage("FrmCancella");
    world.run(1'000);
    EXPECT_NE(FindLoadedPage("FrmCancella"), nullptr) << "opened anew since";
}

}  // namespace
}  // namespace kestrel::testing

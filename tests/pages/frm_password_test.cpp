// The three access codes on the simulated machine: what is shown, and what a commit sends for every kind of typing.
// A code sent wrongly locks a technician out of the machine's own menu.
#include "pages/shell_pages/frm_password.h"

#include <gtest/gtest.h>

#include "support/world.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::World;
using testing::Writes;

class FrmPasswordTest : public ::testing::Test {
  protected:
    FrmPasswordTest() {
        world.start();
        world.setBoard(0, 362, 20362);
        world.setBoard(0, 364, 20364);
        world.setBoard(0, 363, 363);
        page = &world.open<FrmPassword>("FrmPassword");
    }
    World world;
    FrmPassword* page = nullptr;
};

TEST_F(FrmPasswordTest, ShowsTheBoardsCodesUnderTheirCaptions) {
    const struct {
        const char* caption;
        const char* code;
    } rows[] = {{"Password", "20362"}, {"Codice vendite", "20364"}, {"Cancella dati", "363"}};
    for (int i = 0; i < FrmPassword::Codes; ++i) {
        EXPECT_EQ(page->Label1[i].Caption.get(), rows[i].caption);
        EXPECT_EQ(page->Text1[i].Text.get(), rows[i].code);
    }
}

TEST_F(FrmPasswordTest, WhatIsTypedIsTestedCutLimitedAndSentTwice) {
    const struct {
        const char* what;
        int box;
        const char* typed;
        const char* shown;
        Writes sent;
    } cases[] = {
        {"a code", 0, "4711", "4711", {{0, 362, 4711}, {0, 365, 4711}}},
        {"six digits", 0, "123456", "12345", {{0, 362, 12345}, {0, 365, 12345}}},
        {"six digits in the short one", 2, "123456", "1234", {{0, 363, 1234}, {0, 366, 1234}}},
        {"the sales code", 1, "99999", "99999", {{0, 364, 99999}, {0, 367, 99999}}},
        {"none", 1, "0", "0", {{0, 364, 0}, {0, 367, 0}}},
        {"blanks round it", 2, " 7 ", "7", {{0, 363, 7}, {0, 366, 7}}},
        {"below 0: the board's own goes out", 2, "-1", "363", {{0, 363, 363}, {0, 366, 363}}},
        {"no number", 0, "12a", "20362", {}},
        {"a number behind the cut", 0, "12345x", "20362", {}},
        {"nothing", 0, "", "20362", {}},
    };
    for (const auto& c : cases) {
        for (const bool byEnter : {true, false}) {
            world.setBoard(0, 362, 20362);
            world.setBoard(0, 363, 363);
            page->UserClose();
            page = &world.open<FrmPassword>("FrmPassword");
            testing::WriteLog log(world);
            TextBox& box = page->Text1[c.box];
            box.UserType(c.typed);
            ASSERT_TRUE(world.settle());
            EXPECT_EQ(log.take(), Writes{}) << "typing alone sends nothing: " << c.what;
            byEnter ? box.UserEnter() : box.UserLeave();
            EXPECT_EQ(box.Text.get(), c.shown) << c.what;
            EXPECT_EQ(box.waiting(), !c.sent.empty()) << c.what;
            ASSERT_TRUE(world.settle());
            EXPECT_EQ(log.take(), c.sent) << c.what;
            EXPECT_EQ(box.Text.get(), c.shown) << c.what;
            EXPECT_FALSE(box.waiting()) << c.what;
        }
    }
}

TEST_F(FrmPasswordTest, LeavingAnUntouchedBoxSendsItsCodeAgain) {
    testing::WriteLog log(world);
    page->Text1[1].UserLeave();
    ASSERT_TRUE(world.settle());
    EXPECT_EQ(log.take(), (Writes{{0, 364, 20364}, {0, 367, 20364}}));
}

TEST_F(FrmPasswordTest, OtherKeysAndOtherBanksDoNothing) {
    page->Text1[0].Text = "55";
    CurrentBank = 1;
    page->SLabel_Change(362, 9);
    EXPECT_EQ(page->Text1[0].Text.get(), "55");
}

}  // namespace
}  // namespace kestrel

// The three access codes on the simulated machine: what is shown, and what a commit sends for every kind of typing.
// A code sent wrongly locks a technician out of the machine's own menu.
#include "pages/machine/frm_password.h"

#include <gtest/gtest.h>

#include "support/writes.h"

namespace kestrel::testing {
namespace {

struct Passwords : ::testing::Test {
    StartedWorld world{{0, 362, 20362}, {0, 364, 20364}, {0, 363, 363}};
    FrmPassword& page = world.open<FrmPassword>("FrmPassword");
};

TEST_F(Passwords, WhatIsTypedIsTestedCutLimitedAndSentTwice) {
    const struct {
        const char* what;
        int box;
        const char* typed;
        const char* shown;
        Writes sent;
    } cases[] = {
        {"the board's own, left as it is", 1, "20364", "20364", Setting{0, 364, 367}.as(20364)},
        {"six digits", 0, "123456", "12345", Setting{0, 362, 365}.as(12345)},
        {"six digits in the short one", 2, "123456", "1234", Setting{0, 363, 366}.as(1234)},
        {"the highest", 1, "99999", "99999", Setting{0, 364, 367}.as(99999)},
        {"below 0: what the board has goes out", 2, "-1", "1234", Setting{0, 363, 366}.as(1234)},
        {"a number behind the cut", 0, "12345x", "12345", {}},
    };
    for (const auto& c : cases)
        for (const bool byEnter : {true, false}) {
            SCOPED_TRACE(c.what);
            TextBox& box = page.Text1[c.box];
            EXPECT_EQ(writesOf(world, [&] { box.UserType(c.typed); }), Writes{}) << "typing alone sends nothing";
            const auto commit = [&] {
                byEnter ? box.UserEnter() : box.UserLeave();
                EXPECT_EQ(box.Text.get(), c.shown);
                EXPECT_EQ(box.waiting(), !c.sent.empty());
            };
            EXPECT_EQ(writesOf(world, commit), c.sent);
            EXPECT_EQ(box.Text.get(), c.shown);
            EXPECT_FALSE(box.waiting());
        }
}

TEST_F(Passwords, AreShownFromTheMasterAlone) {
    CurrentBank = 1;
    page.SLabel_Change(362, 9);
    const char* const codes[] = {"20362", "20364", "363"};
    for (int i = 0; i < FrmPassword::Codes; ++i) EXPECT_EQ(page.Text1[i].Text.get(), codes[i]);
}

}  // namespace
}  // namespace kestrel::testing

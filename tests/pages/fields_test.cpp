// Every text box for a number: it shows the board's own, and a commit by Enter or by leaving tests, cuts and limits
// what was typed. A code sent wrongly locks a technician out of the machine's own menu.
#include <gtest/gtest.h>

#include "support/layouts.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

struct Case {
    const char* page;
    std::size_t box;  ///< in reading order
    Setting setting;  ///< a shadow that is the parameter: it is sent once
    std::uint32_t boards;
    const char* typed;
    std::uint32_t shown;
    bool sent = true;
};

const Case Cases[] = {
    {"FrmPassword", 0, {0, 362, 365}, 20362, "123456", 12345},
    {"FrmPassword", 0, {0, 362, 365}, 20362, "12345x", 20362, false},  // a number in front of the cut
    {"FrmPassword", 1, {0, 364, 367}, 20364, "20364", 20364},
    {"FrmPassword", 1, {0, 364, 367}, 20364, "99999", 99999},
    {"FrmPassword", 2, {0, 363, 366}, 363, "123456", 1234},
    {"FrmPassword", 2, {0, 363, 366}, 363, "-1", 363},  // what the board has goes out
    {"FrmOpzioni", 0, {0, 356, 356}, 77, "9999997", 999999},
    {"FrmOpzioni", 1, {0, 357, 357}, 4242, "65535", 65535},
    {"FrmOpzioni", 1, {0, 357, 357}, 4242, "65536", 4242},
    {"FrmOpzioni", 2, {0, 358, 358}, 42, "9999", 999},
    {"FrmOpzioni", 2, {0, 358, 358}, 42, "abc", 42, false},
    {"FrmOpzioni", 3, {0, 361, 361}, 4243, "-1", 4243},
};

TEST(Fields, WhatIsTypedIsTestedCutLimitedAndSentOnACommitAlone) {
    for (const Case& each : Cases)
        for (const bool byEnter : {true, false}) {
            SCOPED_TRACE(std::string(each.page) + " " + each.typed);
            StartedWorld world({{each.setting.bank, each.setting.parameter, each.boards}});
            std::vector<TextBox*> boxes;
            eachControl(world.open<Page>(each.page).Arrange(), [&](Control& control) {
                if (auto* box = dynamic_cast<TextBox*>(&control)) boxes.push_back(box);
            });
            TextBox& box = *boxes.at(each.box);
            EXPECT_EQ(box.Text.get(), std::to_string(each.boards));
            EXPECT_EQ(writesOf(world, [&] { box.UserType(each.typed); }), Writes{});
            const auto commit = [&] {
                byEnter ? box.UserEnter() : box.UserLeave();
                EXPECT_EQ(box.waiting(), each.sent);
            };
            EXPECT_EQ(writesOf(world, commit), each.sent ? each.setting.as(each.shown) : Writes{});
            EXPECT_EQ(box.Text.get(), std::to_string(each.shown));
            EXPECT_FALSE(box.waiting());
        }
}

}  // namespace
}  // namespace kestrel::testing

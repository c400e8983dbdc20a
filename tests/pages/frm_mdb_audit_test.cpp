// The page of the MDB audit: raw amounts, and a button that asks before it clears.
// What is cleared is looked up on the machine.
#include "pages/sales/frm_mdb_audit.h"

#include <gtest/gtest.h>

#include "support/bare_mirror.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

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

}  // namespace
}  // namespace kestrel::testing

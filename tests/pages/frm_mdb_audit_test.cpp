// The page of the MDB audit: raw amounts, and a button that asks before it clears.
// What is cleared is looked up on the machine.
#include "pages/sales/frm_mdb_audit.h"

#include <gtest/gtest.h>

#include "support/arrivals.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::Bench;
using testing::tell;
using testing::World;
using testing::Writes;

TEST(FrmMDBaudit, ShowsSixRawAmountsWhateverTheDecimals) {
    for (const std::uint32_t decimals : {0U, 2U, 3U}) {
        World world;
        world.start();
        world.setBoard(0, 3, decimals);
        for (int i = 0; i < 6; ++i) world.setBoard(0, 193 + i, static_cast<std::uint32_t>(1250 + i));
        auto& page = world.open<FrmMDBaudit>("FrmMDBaudit");
        for (int i = 0; i < 6; ++i) EXPECT_EQ(page.Label2[i].Caption.get(), std::to_string(1250 + i));
        EXPECT_EQ(page.Label1[0].Caption.get(), "importo inserito nei tubi ");
        EXPECT_EQ(page.Label1[5].Caption.get(), "importo caricato dalla chiave");
        EXPECT_EQ(page.Caption.get(), "MDB Audit");
    }
}

TEST(FrmMDBaudit, ClearsOnYesAloneAndAsksInTheOneBox) {
    using enum Message::Answer;
    for (const auto answer : {No, Cancel, Yes}) {
        World world;
        world.start();
        for (int i = 0; i < 6; ++i) world.setBoard(0, 193 + i, 500);
        auto& page = world.open<FrmMDBaudit>("FrmMDBaudit");
        world.platform.messages.clear();
        world.platform.answers = {answer};
        const Writes writes = writesOf(world, [&] {
            CurrentBank = 1;  // where the scan may stand when the user acts
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
        for (int i = 0; i < 6; ++i) EXPECT_EQ(page.Label2[i].Caption.get(), answer == Yes ? "0" : "500");
        EXPECT_TRUE(page.Command1.Enabled) << "the board has answered";
    }
}

TEST(FrmMDBaudit, TheButtonComesBackWithTheFirstAmountAlone) {
    Bench bench;
    auto& page = bench.load<FrmMDBaudit>();
    page.Command1.Enabled = false;
    tell(page, 0, 194, 1);
    tell(page, 0, 198, 1);
    EXPECT_FALSE(page.Command1.Enabled);
    ParamFlags(0, 193) |= flag::Valid;
    tell(page, 2, 17, 1);
    EXPECT_TRUE(page.Command1.Enabled) << "whatever number comes";
    tell(page, 1, 193, 77);
    EXPECT_EQ(page.Label2[0].Caption.get(), "");
}

}  // namespace
}  // namespace kestrel

// The counts until service on the simulated machine, over the whole unsigned range of the board.
// A sign lost here would call for service at once, or never.
#include "pages/machine/frm_azione.h"

#include <gtest/gtest.h>

#include "support/world.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::Writes;

class FrmAzioneTest : public ::testing::Test {
  protected:
    FrmAzioneTest() { world.start(); }
    FrmAzione& open() { return world.open<FrmAzione>("FrmAzione"); }
    testing::World world;
};

TEST_F(FrmAzioneTest, EachRowShowsItsCountAsTheBoardHoldsIt) {
    const struct {
        const char* caption;
        int count;
        int bar;
    } rows[] = {{"elettrovalvole", 0, -32768},       {"depuratore", 65535, 32767}, {"caldaia", 32767, -1},
                {"sanitarizzazione HCCP", 32768, 0}, {"filtro FB1", 1, -32767},    {"filtro FB2", 40000, 7232}};
    for (int i = 0; i < 6; ++i) {
        world.setBoard(1, 1204 + i, static_cast<std::uint32_t>(rows[i].count));
        world.setBoard(1, 1210 + i, 12345);
    }
    FrmAzione& page = open();
    EXPECT_EQ(page.Caption.get(), "Azione Prev");
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(page.Label6[i].Caption.get(), rows[i].caption);
        EXPECT_EQ(page.HScroll1[i].Value, rows[i].bar) << rows[i].caption;
        EXPECT_EQ(page.Label10[i].Caption.get(), std::to_string(rows[i].count));
    }
}

TEST_F(FrmAzioneTest, AMoveIsWrittenUnsignedToBothAndShownWhenConfirmed) {
    FrmAzione& page = open();
    for (int i = 0; i < 6; ++i)
        for (const int count : {0, 65535, 32768}) {
            testing::WriteLog log(world);
            const std::string before = page.Label10[i].Caption;
            page.HScroll1[i].UserMove(count - 32768);
            EXPECT_EQ(page.Label10[i].Caption.get(), before);
            ASSERT_TRUE(world.settle());
            const auto value = static_cast<std::uint32_t>(count);
            EXPECT_EQ(log.take(), (Writes{{1, 1204 + i, value}, {1, 1210 + i, value}}));
            EXPECT_EQ(page.Label10[i].Caption.get(), std::to_string(count));
        }
    EXPECT_EQ(page.HScroll1[0].LargeChange, 100);
}

}  // namespace
}  // namespace kestrel

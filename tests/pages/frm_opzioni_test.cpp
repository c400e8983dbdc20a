// The options on the simulated machine: every bit, scalar and field, and when each board's group is live.
// A bit written from a byte that was never read would wipe out the machine's other options.
#include "pages/machine/frm_opzioni.h"

#include <gtest/gtest.h>

#include "link/identification.h"
#include "support/watches.h"
#include "support/world.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::World;
using testing::Writes;

struct Bit {
    int toggle;
    int bank;
    int parameter;
    int shadow;
    int bit;
};
constexpr Bit Bits[] = {{0, 1, 1298, 1300, 0}, {1, 1, 1299, 1301, 1}, {2, 1, 1298, 1300, 2}, {3, 1, 1298, 1300, 3},
                        {4, 1, 1298, 1300, 4}, {5, 1, 1299, 1301, 2}, {8, 2, 59, 274, 3},    {9, 0, 84, 86, 2},
                        {10, 0, 84, 86, 1},    {11, 0, 84, 86, 7},    {12, 0, 85, 87, 5},    {13, 1, 1299, 1301, 0},
                        {14, 2, 59, 274, 0},   {21, 2, 59, 274, 1},   {22, 2, 59, 274, 2}};

/// The groups of controls that only one board's presence rules.
bool masterLive(FrmOpzioni& page) {
    for (const int i : {9, 10, 11, 12}) EXPECT_EQ(page.SwitchX1[i].usable(), page.SlswitchX1.usable()) << i;
    EXPECT_EQ(page.SlswitchX5.usable(), page.SlswitchX1.usable());
    EXPECT_EQ(page.SlswitchX4.usable(), page.SlswitchX1.usable());
    return page.SlswitchX1.usable();
}
bool alderLive(FrmOpzioni& page) {
    for (const int i : {0, 1, 2, 3, 4, 5}) EXPECT_EQ(page.SwitchX1[i].usable(), page.SwitchX1[13].usable()) << i;
    for (ScrollBar& bar : page.HScroll1) EXPECT_EQ(bar.usable(), page.SwitchX1[13].usable());
    return page.SwitchX1[13].usable();
}
bool cedarLive(FrmOpzioni& page) {
    for (const int i : {14, 21, 22}) EXPECT_EQ(page.SwitchX1[i].usable(), page.SwitchX1[8].usable()) << i;
    return page.SwitchX1[8].usable();
}

class FrmOpzioniTest : public ::testing::Test {
  protected:
    FrmOpzioniTest() {
        world.start();
        world.setBoard(0, 85, 1);
    }
    static FrmOpzioni& openIn(World& in) {
        auto& page = in.open<FrmOpzioni>("FrmOpzioni");
        in.run(3000);
        return page;
    }
    FrmOpzioni& open() { return openIn(world); }
    static void arrives(FrmOpzioni& page, int bank, int n, ParamValue value) {
        CurrentBank = bank;
        page.SLabel_Change(n, value);
    }
    World world;
};

TEST_F(FrmOpzioniTest, EachToggleShowsItsBitAndNoOther) {
    FrmOpzioni& page = open();
    for (const Bit& own : Bits)
        for (const bool set : {true, false}) {
            const unsigned bit = 1U << own.bit;
            arrives(page, own.bank, own.parameter, set ? bit : 0xFF & ~bit);
            for (const Bit& other : Bits) {
                if (other.bank != own.bank || other.parameter != own.parameter) continue;
                EXPECT_EQ(page.SwitchX1[other.toggle].Active, (other.bit == own.bit) == set)
                    << own.toggle << " and " << other.toggle;
            }
        }
}

TEST_F(FrmOpzioniTest, AClickTurnsItsBitInTheLastByteThatTheBoardTold) {
    for (const Bit& own : Bits) {
        world.setBoard(own.bank, own.parameter, own.parameter == 85 ? 0xD8 : 0xA5);
        FrmOpzioni& page = open();
        for (int click = 0; click < 2; ++click) {
            const std::uint32_t before = world.board(own.bank, own.parameter);
            testing::WriteLog log(world);
            page.SwitchX1[own.toggle].UserClick();
            EXPECT_TRUE(page.SwitchX1[own.toggle].waiting());
            ASSERT_TRUE(world.settle());
            const std::uint32_t after = before ^ 1U << own.bit;
            EXPECT_EQ(log.take(), (Writes{{own.bank, own.parameter, after}, {own.bank, own.shadow, after}}))
                << own.toggle;
            EXPECT_EQ(page.SwitchX1[own.toggle].Active, (after >> own.bit & 1) == 1);
            EXPECT_FALSE(page.SwitchX1[own.toggle].waiting());
        }
        page.UserClose();
    }
}

TEST_F(FrmOpzioniTest, TwoQuickClicksOnOneByteStartFromTheSameValue) {
    world.setBoard(0, 84, 0);
    FrmOpzioni& page = open();
    page.SwitchX1[9].UserClick();
    page.SwitchX1[10].UserClick();
    ASSERT_TRUE(world.settle());
    EXPECT_EQ(world.board(0, 84), 2U) << "the first click is lost, as the second one does not know of it";
    EXPECT_FALSE(page.SwitchX1[9].Active);
}

TEST_F(FrmOpzioniTest, CreditTimeoutIsABitOfTheMasterAtRevision20Only) {
    world.setBoard(0, 84, 0x20);
    world.setBoard(2, 59, 0);
    for (const int revision : {19, 20, 21}) {
        FrmOpzioni& page = open();
        SetBoardRevision(revision);
        testing::WriteLog log(world);
        page.SwitchX1[8].UserClick();
        ASSERT_TRUE(world.settle());
        if (revision == 20) {
            EXPECT_EQ(log.take(), (Writes{{0, 84, 0x30}, {0, 86, 0x30}}));
            arrives(page, 0, 84, 0x20);
            EXPECT_TRUE(page.SwitchX1[8].Active) << "the master's bit is not read back";
            EXPECT_FALSE(page.SwitchX1[8].waiting());
        } else {
            EXPECT_EQ(log.take(), (Writes{{2, 59, 8}, {2, 274, 8}}));
            world.setBoard(2, 59, 0);
        }
        page.UserClose();
    }
}

TEST_F(FrmOpzioniTest, ScalarsAreShownAndWrittenTwice) {
    world.setBoard(0, 359, 0);
    world.setBoard(1, 1153, 1);
    world.setBoard(0, 350, 7);
    world.setBoard(0, 3, 2);
    world.setBoard(0, 354, 200);
    FrmOpzioni& page = open();
    EXPECT_EQ(page.HScroll1[0].Value, 180);
    EXPECT_EQ(page.Label10[0].Caption.get(), "200");
    EXPECT_EQ(page.SlswitchX1.Position, 7);
    EXPECT_EQ(page.SlswitchX2.Position, 2);
    EXPECT_EQ(page.SlswitchX4.Position, 1);
    const struct {
        std::function<void()> move;
        Writes sent;
    } cases[] = {
        {[&] { page.HScroll1[0].UserMove(60); }, {{0, 354, 60}, {0, 355, 60}}},
        {[&] { page.HScroll1[1].UserMove(255); }, {{1, 1302, 255}, {1, 1303, 255}}},
        {[&] { page.HScroll1[2].UserMove(1); }, {{1, 1443, 1}, {1, 1445, 1}}},
        {[&] { page.HScroll1[3].UserMove(2); }, {{1, 1444, 2}, {1, 1446, 2}}},
        {[&] { page.SlswitchX1.UserMove(3); }, {{0, 350, 3}, {0, 351, 3}}},
        {[&] { page.SlswitchX2.UserMove(1); }, {{0, 359, 1}, {0, 360, 1}}},
        {[&] { page.SlswitchX4.UserMove(0); }, {{1, 1153, 0}, {1, 1158, 0}}},
    };
    for (const auto& c : cases) {
        testing::WriteLog log(world);
        c.move();
        ASSERT_TRUE(world.settle());
        EXPECT_EQ(log.take(), c.sent);
    }
    arrives(page, 1, 1153, 2);
    EXPECT_EQ(page.SlswitchX4.Position, 0) << "kinds above one are shown as none";
    world.run(3000);
    EXPECT_EQ(page.SlswitchX2.Position, 1) << "the master took the decimals over";
    EXPECT_FALSE(page.SlswitchX2.waiting());
}

TEST_F(FrmOpzioniTest, ThePaymentSystemIsThreeBitsAndTwoOfThemFixTheDecimals) {
    const struct {
        std::uint32_t byte;
        int position;
        bool decimals;  ///< can be set
    } shown[] = {{0, 0, true},  {1, 1, true},  {2, 2, false}, {3, 2, false},
                 {4, 3, false}, {6, 3, false}, {7, 3, false}, {0xF8, 0, true}};
    for (const auto& c : shown) {
        world.setBoard(0, 85, c.byte);
        FrmOpzioni& page = open();
        EXPECT_EQ(page.SlswitchX5.Position, c.position) << c.byte;
        EXPECT_EQ(page.SlswitchX2.usable(), c.decimals) << c.byte;
        EXPECT_EQ(page.Label5[0].Enabled, c.decimals) << c.byte;
        page.UserClose();
    }
    world.setBoard(0, 85, 0xA9);
    FrmOpzioni& page = open();
    const std::vector<std::string> labels = {"Gettone", "G13", "Executive", "MDB"};
    EXPECT_EQ(page.SlswitchX5.labels(), labels);
    for (const auto& [position, low] : {std::pair{2, 2U}, {3, 4U}, {0, 0U}, {1, 1U}}) {
        testing::WriteLog log(world);
        page.SlswitchX5.UserMove(position);
        ASSERT_TRUE(world.settle());
        EXPECT_EQ(log.take(), (Writes{{0, 85, 0xA8 | low}, {0, 87, 0xA8 | low}}));
        EXPECT_EQ(page.SlswitchX2.usable(), position < 2);
    }
}

TEST_F(FrmOpzioniTest, NumbersAreCutLimitedAndWrittenOnce) {
    const struct {
        int field;
        const char* typed;
        const char* shown;
        Writes sent;
    } cases[] = {
        {0, "1234567", "123456", {{0, 356, 123456}}},
        {0, "999999", "999999", {{0, 356, 999999}}},
        {1, "65535", "65535", {{0, 357, 65535}}},
        {1, "65536", "4242", {{0, 357, 4242}}},
        {2, "9999", "999", {{0, 358, 999}}},
        {3, "-1", "4243", {{0, 361, 4243}}},
        {3, "", "4243", {}},
        {2, "abc", "42", {}},
    };
    for (const auto& c : cases)
        for (const bool byEnter : {true, false}) {
            world.setBoard(0, 356, 77);
            world.setBoard(0, 357, 4242);
            world.setBoard(0, 358, 42);
            world.setBoard(0, 361, 4243);
            FrmOpzioni& page = open();
            testing::WriteLog log(world);
            TextBox& box = page.Text1[c.field];
            box.UserType(c.typed);
            CurrentBank = 1;  // where the scan may stand when the user acts
            byEnter ? box.UserEnter() : box.UserLeave();
            EXPECT_EQ(box.Text.get(), c.shown);
            ASSERT_TRUE(world.settle());
            EXPECT_EQ(log.take(), c.sent) << c.typed;
            EXPECT_EQ(box.Text.get(), c.shown);
            EXPECT_FALSE(box.waiting()) << c.typed;
            page.UserClose();
        }
}

TEST_F(FrmOpzioniTest, TheMachinesFeaturesSayHowManyLanguagesItsDisplayHas) {
    world.setBoard(0, 7, 8);
    world.setBoard(0, 350, 5);
    FrmOpzioni& page = open();
    EXPECT_EQ(page.SlswitchX1.top(), 7);
    EXPECT_EQ(page.SlswitchX1.Position, 5);
    testing::WriteLog log(world);
    world.setBoard(0, 7, 0);
    world.run(2000);
    EXPECT_EQ(page.SlswitchX1.top(), 3);
    EXPECT_EQ(page.SlswitchX1.Position, 0);
    world.setBoard(0, 7, 8);
    world.run(2000);
    EXPECT_EQ(page.SlswitchX1.Position, 0) << "the language that was too high is forgotten";
    arrives(page, 0, 350, 9);
    EXPECT_EQ(page.SlswitchX1.Position, 0);
    EXPECT_EQ(log.take(), Writes{});
}

TEST_F(FrmOpzioniTest, RevisionsAreTenthsAndThePowerBoardsIsKeptForOthers) {
    world.setBoard(0, 158, 27);
    world.setBoard(1, 1203, 9);
    world.setBoard(2, 283, 110);
    FrmOpzioni& page = open();
    EXPECT_EQ(page.Label7[0].Caption.get(), "2.7");
    EXPECT_EQ(page.Label7[1].Caption.get(), "0.9");
    EXPECT_EQ(page.Label7[2].Caption.get(), "11.0");
    EXPECT_EQ(PowerBoardRevision(), 9);
}

TEST_F(FrmOpzioniTest, NothingButTheFieldsIsLiveBeforeThe21stValueThatThePageTakes) {
    ShowPage("FrmOpzioni");
    auto& page = dynamic_cast<FrmOpzioni&>(*FindLoadedPage("FrmOpzioni"));
    const std::pair<int, int> taken[] = {{0, 1},    {0, 2},    {0, 85},   {0, 3},    {0, 7},    {0, 158},  {0, 350},
                                         {0, 354},  {0, 356},  {0, 357},  {0, 358},  {0, 361},  {1, 1153}, {1, 1203},
                                         {1, 1298}, {1, 1299}, {1, 1302}, {1, 1443}, {1, 1444}, {2, 59}};
    ASSERT_EQ(std::size(taken), 20U);
    // Boards are there at 12, and a payment system of 24 leaves the decimals free.
    for (const auto& [bank, n] : taken) arrives(page, bank, n, n == 85 ? 24 : 12);
    // What is subscribed and not shown, and words that are not new, do not count.
    const std::pair<int, int> others[] = {{0, 355}, {1, 1205}, {1, 1303}, {1, 1445}, {1, 1446}, {2, 274},
                                          {0, 1},   {0, 2},    {0, 7},    {1, 84},   {2, 1298}};
    for (const auto& [bank, n] : others) arrives(page, bank, n, 12);
    EXPECT_FALSE(page.SlswitchX2.usable());
    EXPECT_FALSE(masterLive(page) || alderLive(page) || cedarLive(page));
    EXPECT_TRUE(page.Text1[0].usable());
    arrives(page, 2, 283, 10);
    EXPECT_TRUE(masterLive(page) && alderLive(page) && cedarLive(page));
    EXPECT_TRUE(page.SlswitchX2.usable());
}

TEST_F(FrmOpzioniTest, OpensWithinAFewSecondsOnEveryMachineWithTheGroupsOfItsBoards) {
    for (const bool hotDrink : {true, false})
        for (const bool sector : {true, false}) {
            auto options = World::still();
            options.hotDrinkBoard = hotDrink;
            options.sectorBoard = sector;
            World other(options);
            other.start();
            other.setBoard(0, 85, 1);
            auto& page = dynamic_cast<FrmOpzioni&>(ShowPage("FrmOpzioni"));
            int waited = 0;
            while (!page.SlswitchX1.Enabled && waited < 10'000) {
                other.run(20);
                waited += 20;
            }
            EXPECT_LT(waited, 4000) << hotDrink << sector;
            EXPECT_TRUE(masterLive(page));
            EXPECT_TRUE(page.SlswitchX2.usable());
            EXPECT_EQ(alderLive(page), hotDrink);
            EXPECT_EQ(cedarLive(page), sector);
        }
}

TEST_F(FrmOpzioniTest, AfterwardsTheGroupsFollowThePresenceOfTheirBoards) {
    FrmOpzioni& page = open();
    for (const bool hotDrink : {false, true})
        for (const bool sector : {true, false}) {
            world.setBoard(0, 1, hotDrink ? 6 : 2);
            world.setBoard(0, 2, sector ? 5 : 1);
            world.run(3000);
            EXPECT_EQ(alderLive(page), hotDrink);
            EXPECT_EQ(cedarLive(page), sector);
            EXPECT_TRUE(masterLive(page));
        }
}

TEST_F(FrmOpzioniTest, CaptionsComeFromTheLanguageButForThoseThatStay) {
    FrmOpzioni& page = open();
    const std::pair<int, const char*> captions[] = {{0, "doppio caffè FreshBrew"}, {5, "sempre bicchiere"},
                                                    {8, "timeout credito"},        {13, "ntc freddo"},
                                                    {14, "nTC Cedar dal master"},  {22, "sens. Cedar Mas."}};
    for (const auto& [index, text] : captions) EXPECT_EQ(page.Label1[index].Caption.get(), text);
    EXPECT_EQ(page.Label6[9].Caption.get(), "numero cliente");
    EXPECT_EQ(page.Label5[4].Caption.get(), "tipo macchina");
    EXPECT_EQ(page.SlswitchX2.labels(), (std::vector<std::string>{"00000", "0000.0", "000.00", "00.000"}));
    EXPECT_EQ(page.Caption.get(), "Opzioni");
    EXPECT_EQ(page.Label7s[1].Caption.get(), "Rev. potenza");
}

TEST_F(FrmOpzioniTest, LeavesTheProbesSubscriptionsBehindAndTakesOthersAway) {
    FrmOpzioni& page = open();
    // Others may be subscribed to what this page gives back without ever having taken it.
    const std::pair<int, int> takenAway[] = {{0, 86}, {0, 87}, {0, 351}, {1, 1300}, {1, 1301}, {1, 1211}};
    for (const auto& [bank, n] : takenAway) {
        CurrentBank = bank;
        ParamWatch(n);
    }
    page.UserClose();
    EXPECT_EQ(testing::watches(), testing::watchesOf({{1, 1443, 1446}}));
    open().UserClose();
    EXPECT_EQ(testing::watches(), testing::watchesOf({{1, 1443, 1446}, {1, 1443, 1446}}));
}

}  // namespace
}  // namespace kestrel

// What every page does to the line and to the user as it opens, as boards come and go under it, and as it closes.
// A subscription left behind keeps the line busy for the rest of the run; one that is missing shows old values; a
// control that is live without its board writes into the dark.
#include <gtest/gtest.h>

#include <map>

#include "support/layouts.h"
#include "support/watches.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

/// A number of controls with both slave boards, with the hot-drink board alone, with the sector board alone, and with
/// neither.
struct ByBoards {
    int both, hotDrink, sector, neither;

    int with(bool hotDrinkThere, bool sectorThere) const {
        return hotDrinkThere ? (sectorThere ? both : hotDrink) : (sectorThere ? sector : neither);
    }
};

struct PageCase {
    const char* page;
    const char* list;       ///< what it subscribes to
    ByBoards usable;        ///< what a user can work
    ByBoards live;          ///< what is not greyed, captions, figures and frames as well
    const char* left = "";  ///< what it never gives back
    Writes opening = {}, closing = {};
};

const PageCase Cases[] = {
    // Once locked, it opens with a count that the board tells anew.
    {"FrmConMac", "0: 1 1: 1298 1153-1157 1304-1336 1334", {32, 32, 0, 0}, {81, 81, 11, 11}},
    {"FrmInter", "0: 1 1: 1156 1370-1381", {15, 15, 0, 0}, {37, 37, 7, 7}},
    // One is given back in another bank than the one that it was taken in.
    {"FrmProUni", "0: 1 1: 1156 1203 1298-1301 1394-1402", {6, 6, 0, 0}, {18, 18, 4, 4}, "1: 1203"},
    // The times of the plus block are live at all times.
    {"FrmPresel", "0: 1 1: 1156 1298 1412-1435 1447-1454", {16, 16, 4, 4}, {40, 40, 24, 24}},
    {"FrmTempi", "0: 1-2 1: 1143-1152 1439-1442 2: 58 273", {8, 7, 1, 0}, {26, 22, 4, 0}},
    // Without the board: the preselection toggle and the one switch that no lock knows.
    {"FrmDosi",
     "0: 1 5 7 1: 1153-1154 1063-1074 1079-1090 1095 1127-1142 1298 1455-1458 7-1031/32",
     {22, 22, 2, 2},
     {97, 97, 84, 84},
     "",
     {{0, 4, 0}}},
    {"FrmPagamento", "0: 3 84-85 312-319 328 330 332-338 342-349", {8, 8, 8, 8}, {26, 26, 26, 26}},
    {"FrmPrezzi", "0: 3 8-84 86", {39, 39, 39, 39}, {119, 119, 119, 119}},
    {"FrmSconti", "0: 3 88-157", {35, 35, 35, 35}, {107, 107, 107, 107}},
    {"FrmAssSel", "0: 1 84 1: 1163-1198", {18, 18, 0, 0}, {54, 54, 0, 0}},
    {"FrmAssSet", "0: 2 84 2: 1-48", {48, 0, 48, 0}, {192, 0, 192, 0}},
    {"FrmTotali", "0: 3 159-169", {0, 0, 0, 0}, {24, 24, 24, 24}},
    {"FrmBattute", "0: 169-176 1: 1216-1233 2: 71-118", {0, 0, 0, 0}, {149, 149, 149, 149}},
    {"FrmGratis", "1: 1234-1251 2: 119-166", {0, 0, 0, 0}, {138, 138, 138, 138}},
    {"FrmBricco", "1: 1252-1269", {0, 0, 0, 0}, {39, 39, 39, 39}},
    {"FrmProva", "1: 1270-1287 2: 167-214", {0, 0, 0, 0}, {138, 138, 138, 138}},
    {"FrmMonete", "0: 177-185", {0, 0, 0, 0}, {34, 34, 34, 34}},
    {"FrmMDBaudit", "0: 193-198", {1, 1, 1, 1}, {13, 13, 13, 13}},
    {"FrmCancella", "", {3, 3, 3, 3}, {8, 8, 8, 8}},
    // The settings of the probe are never given back.
    {"FrmOpzioni",
     "0: 1-3 7 84-85 158 350 354-358 361 1: 1153 1203 1205 1298-1299 1302-1303 1443-1446 2: 59 274 283",
     {27, 23, 16, 12},
     {73, 65, 47, 39},
     "1: 1443-1446"},
    {"FrmAzione", "1: 1204-1215", {6, 6, 6, 6}, {18, 18, 18, 18}},
    {"FrmPassword", "0: 362-364", {6, 6, 6, 6}, {9, 9, 9, 9}},
    {"FrmTemperatura", "0: 1-2 1: 1199-1200 1153 376 1202 2: 51-57 266-272", {7, 2, 5, 0}, {23, 7, 19, 3}},
    {"FrmGrafico", "0: 1-2 1: 1288 2: 52 287", {0, 0, 0, 0}, {1, 1, 1, 1}},
    {"FrmOrologio", "0: 199-218 239-248 7", {37, 37, 37, 37}, {115, 115, 115, 115}},
    // A test can be started on one board.
    {"FrmInOut",
     "0: 1-2 249 369 1: 1288-1297 2: 52 287-290",
     {1, 1, 1, 0},
     {205, 154, 141, 89},
     "",
     {{0, 368, 255}},
     {{0, 368, 0}}},
    {"FrmTestCedar", "0: 2 7 2: 290", {7, 0, 7, 0}, {10, 3, 10, 3}},
    {"FrmSchema", "1: 1288-1290 1292-1295", {0, 0, 0, 0}, {78, 78, 78, 78}},
    {"FrmAllarmi", "0: 251-311", {1, 1, 1, 1}, {4, 4, 4, 4}},
    {"FrmInfo", "", {0, 0, 0, 0}, {6, 6, 6, 6}},
};

/// The subscriptions of absent boards come to nothing.
Watches listOf(const char* numbers, bool hotDrink, bool sector) {
    Watches list = watchesOf(numbers);
    std::erase_if(list, [&](const auto& each) {
        const int bank = each.first.first;
        return (bank == 1 && !hotDrink) || (bank == 2 && !sector);
    });
    return list;
}

TEST(EveryPage, TakesItsListOpensWhatTheBoardsThereAllowAndGivesItsListBack) {
    for (const PageCase& each : Cases)
        for (const bool hotDrink : {true, false})
            for (const bool sector : {true, false}) {
                SCOPED_TRACE(std::string(each.page) + (hotDrink ? " H" : "") + (sector ? " S" : ""));
                StartedWorld world(World::still(hotDrink, sector), {{0, 85, 1}});
                WriteLog log(world);
                Page& page = ShowPage(each.page);
                EXPECT_EQ(watches(), listOf(each.list, hotDrink, sector));
                world.run(6'000);
                EXPECT_EQ(usableInputs(page.Arrange()), each.usable.with(hotDrink, sector));
                EXPECT_EQ(liveControls(page.Arrange()), each.live.with(hotDrink, sector));
                EXPECT_EQ(log.take(), each.opening);
                const Watches before = watches();
                page.UserReadAgain();
                world.letActsIn();
                for (const auto& [record, count] : watchesOf(each.list)) {
                    const auto& [bank, number] = record;
                    const bool isOrder = page.name() == "FrmDosi" && bank == 0;
                    const bool isPending = (ParamFlags(bank, number) & flag::Pending) != 0;
                    EXPECT_TRUE(isPending || isOrder || !before.contains(record)) << number;
                }
                world.run(6'000);
                EXPECT_EQ(watches(), before) << "read again";
                EXPECT_EQ(usableInputs(page.Arrange()), each.usable.with(hotDrink, sector)) << "read again";
                EXPECT_EQ(log.take(), Writes{}) << "read again";
                page.UserClose();
                world.run(3'000);
                EXPECT_EQ(log.take(), each.closing);
                EXPECT_EQ(watches(), listOf(each.left, hotDrink, sector));
            }
}

TEST(EveryPage, FollowsTheWordsOfPresenceOfItsBoards) {
    for (const PageCase& each : Cases) {
        SCOPED_TRACE(each.page);
        StartedWorld world({{0, 85, 1}});
        Window& page = ShowPage(each.page);
        world.run(6'000);
        for (const auto& [hotDrink, sector] : {std::pair(true, false), {false, false}, {false, true}, {true, true}}) {
            world.setBoard(0, 1, hotDrink ? 0xFF : 0xF3);
            world.setBoard(0, 2, sector ? 4 : 0xFB);
            world.run(3'000);
            const bool staysLocked = page.name() == "FrmConMac" && hotDrink && sector;
            EXPECT_EQ(usableInputs(page.Arrange()), staysLocked ? 0 : each.usable.with(hotDrink, sector))
                << (hotDrink ? "hot drink " : "") << (sector ? "sector" : "");
        }
    }
}

TEST(EveryPage, HasReadEveryControlOnceItsValuesHaveCome) {
    for (const PageCase& each : Cases) {
        StartedWorld world({{0, 85, 1}});
        Window& page = ShowPage(each.page);
        world.run(10'000);
        eachControl(page.Arrange(), [&](const Control& control) {
            EXPECT_FALSE(control.unread() && control.Visible) << each.page << ": " << control.accessibleName();
        });
    }
}

TEST(EveryPage, HasEachControlInOnePlace) {
    StartedWorld world;
    for (const auto& [name, make] : AllPages()) {
        std::map<const Control*, int> places;
        eachControl(ShowPage(name).Arrange(), [&](const Control& control) { ++places[&control]; });
        EXPECT_FALSE(places.empty()) << name;
        for (const auto& [control, times] : places) EXPECT_EQ(times, 1) << name << ": " << control->accessibleName();
    }
}

}  // namespace
}  // namespace kestrel::testing

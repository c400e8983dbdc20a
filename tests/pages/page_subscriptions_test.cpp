// What each page keeps fresh while it is open, and that opening and closing it writes nothing and leaves nothing
// behind. A subscription that is left behind keeps the line busy for the rest of the run; one that is missing shows old
// values.
#include <gtest/gtest.h>

#include "support/watches.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::watchesOf;

TEST(PageSubscriptions, EachPageTakesItsListAndGivesBackAllButTheProbes) {
    const struct {
        const char* page;
        testing::Watches list;
        testing::Watches left = {};
    } cases[] = {
        {"FrmPrezzi", watchesOf({{0, 3, 3}, {0, 8, 83}, {0, 84, 84}, {0, 86, 86}})},
        {"FrmSconti", watchesOf({{0, 3, 3}, {0, 88, 157}})},
        {"FrmAssSel", watchesOf({{1, 1163, 1198}, {0, 1, 1}, {0, 84, 84}})},
        {"FrmAssSet", watchesOf({{2, 1, 48}, {0, 2, 2}, {0, 84, 84}})},
        {"FrmTotali", watchesOf({{0, 3, 3}, {0, 159, 169}})},
        {"FrmBattute", watchesOf({{0, 169, 176}, {1, 1216, 1233}, {2, 71, 118}})},
        {"FrmGratis", watchesOf({{1, 1234, 1251}, {2, 119, 166}})},
        {"FrmBricco", watchesOf({{1, 1252, 1269}})},
        {"FrmProva", watchesOf({{1, 1270, 1287}, {2, 167, 214}})},
        {"FrmMonete", watchesOf({{0, 177, 185}})},
        {"FrmMDBaudit", watchesOf({{0, 193, 198}})},
        {"FrmCancella", {}},
        {"FrmConMac", watchesOf({{1, 1298, 1298}, {1, 1153, 1157}, {1, 1304, 1336}, {1, 1334, 1334}, {0, 1, 1}})},
        {"FrmOpzioni",
         watchesOf({{0, 1, 3},
                    {0, 7, 7},
                    {0, 84, 85},
                    {0, 158, 158},
                    {0, 350, 350},
                    {0, 354, 358},
                    {0, 361, 361},
                    {1, 1153, 1153},
                    {1, 1203, 1203},
                    {1, 1205, 1205},
                    {1, 1298, 1299},
                    {1, 1302, 1303},
                    {1, 1443, 1446},
                    {2, 59, 59},
                    {2, 274, 274},
                    {2, 283, 283}}),
         watchesOf({{1, 1443, 1446}})},
        {"FrmAzione", watchesOf({{1, 1204, 1215}})},
        {"FrmTemperatura", watchesOf({{1, 1199, 1200},
                                      {1, 1153, 1153},
                                      {1, 376, 376},
                                      {1, 1202, 1202},
                                      {2, 51, 57},
                                      {2, 266, 272},
                                      {0, 1, 2}})},
        {"FrmGrafico", watchesOf({{2, 52, 52}, {2, 287, 287}, {0, 1, 2}, {1, 1288, 1288}})},
        {"FrmOrologio", watchesOf({{0, 199, 218}, {0, 239, 248}, {0, 7, 7}})},
    };
    for (const auto& c : cases) {
        testing::World world;
        world.start();
        testing::WriteLog log(world);
        auto& page = world.open<Page>(c.page);
        world.run(2'000);
        EXPECT_EQ(testing::watches(), c.list) << c.page;
        page.UserClose();
        world.run(2'000);
        EXPECT_EQ(testing::watches(), c.left) << c.page;
        EXPECT_EQ(log.take(), testing::Writes{}) << c.page;
    }
}

}  // namespace
}  // namespace kestrel

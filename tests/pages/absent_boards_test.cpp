// Machines without one or both of the slave boards, and boards that go away under open pages.
// What belongs to a board must be live exactly while the master says that it is there.
#include <gtest/gtest.h>

#include "pages/climate/frm_temperatura.h"
#include "pages/machine/frm_con_mac.h"
#include "pages/machine/frm_opzioni.h"
#include "pages/payment/price_assignment.h"
#include "support/world.h"

namespace kestrel {
namespace {

using simulator::Board;
using testing::World;

struct Pages {
    explicit Pages(World& world)
        : temperatures(world.open<FrmTemperatura>("FrmTemperatura")),
          configuration(world.open<FrmConMac>("FrmConMac")),
          options(world.open<FrmOpzioni>("FrmOpzioni")),
          selections(world.open<PriceAssignment>("FrmAssSel")),
          sectors(world.open<PriceAssignment>("FrmAssSet")) {}

    void expectLive(bool hotDrink, bool sector) const {
        const std::pair<const Control*, const char*> ofHotDrink[] = {
            {&temperatures.HScroll1, "boiler"},           {&temperatures.HScroll2[5], "refrigerator"},
            {&configuration.iSwSliderX1[0], "valves"},    {&configuration.isrAbb[2], "cold pairing"},
            {&options.SwitchX1[13], "hot-drink options"}, {&options.HScroll1[3], "probe"},
            {&selections.HScroll1[17], "selection"}};
        const std::pair<const Control*, const char*> ofSector[] = {{&temperatures.HScroll2[0], "tank"},
                                                                   {&options.SwitchX1[22], "sector options"},
                                                                   {&sectors.HScroll1[47], "sector"}};
        for (const auto& [control, name] : ofHotDrink) EXPECT_EQ(control->usable(), hotDrink) << name;
        for (const auto& [control, name] : ofSector) EXPECT_EQ(control->usable(), sector) << name;
        EXPECT_TRUE(options.SwitchX1[9].usable()) << "the master is always there";
    }

    FrmTemperatura& temperatures;
    FrmConMac& configuration;
    FrmOpzioni& options;
    PriceAssignment& selections;
    PriceAssignment& sectors;
};

TEST(AbsentBoards, EachGroupIsLiveExactlyWhileItsBoardIsThere) {
    for (const bool hotDrink : {true, false})
        for (const bool sector : {true, false}) {
            SCOPED_TRACE((hotDrink ? "hot-drink board" : "no hot-drink board") + std::string(sector ? ", sector" : ""));
            auto options = World::still();
            options.hotDrinkBoard = hotDrink;
            options.sectorBoard = sector;
            World world(options);
            world.start();
            const Pages pages(world);
            world.run(5'000);
            pages.expectLive(hotDrink, sector);
            const auto goesAway = [&](Board board, int presence) {
                world.machine.setBoardSilent(board, true);
                world.setBoard(0, presence, 0);
                world.run(60'000);
            };
            goesAway(Board::Sector, 2);
            pages.expectLive(hotDrink, false);
            goesAway(Board::HotDrink, 1);
            pages.expectLive(false, false);
        }
}

}  // namespace
}  // namespace kestrel

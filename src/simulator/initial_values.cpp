// What stands in the machine's parameters when it is switched on, as tables.
// Amounts are in hundredths, times in tenths of a second.
#include "simulator/initial_values.h"

#include <algorithm>
#include <vector>

#include "catalogue/rows.h"
#include "simulator/alarms.h"
#include "simulator/recipe.h"

namespace kestrel::simulator {
namespace {

// Values for a parameter and those behind it.
struct Run {
    Setting first;
    std::vector<std::uint32_t> values;
};

const std::vector<Run>& settings() {
    static const std::vector<Run> runs{
        // Prices of the four preselections, the thirty prices, prices of the four plus preselections.
        {master::PreselectionPrice[0], {0, 5, 5, 10}},
        {master::Price[0], {50, 60, 70, 65, 60,  65,  50,  70,  20,  55,  65,  75,  50,  75,  90,
                            80, 80, 60, 80, 100, 120, 150, 180, 220, 250, 280, 300, 350, 400, 500}},
        {master::PreselectionPlusPrice[0], {5, 5, 10, 10}},
        {master::SaleOptions, {0x20, mdbBit}},
        {master::Discount[0],
         {5, 5, 10, 5, 5, 5, 5, 10, 0, 5, 5, 10, 5, 10, 10, 10, 10, 5, 0, 0, 10, 10, 20, 20, 20, 20, 20, 20, 20, 20}},
        {master::PreselectionDiscount[0], {0, 5, 5, 5}},
        {master::OwnCupDiscount, {5}},
        // Bands, minutes before hours and beginnings of both bands before their ends: on from 6:30 to 13:00 and from
        // 13:00 to 22:45, washing at 5:45 and 23:00, discounts from 14:00 to 15:30 and from 19:00 to 20:00.
        {master::BandOn1StartMinute, {30, 6, 0, 13, 0, 13, 45, 22, 45, 5, 0, 23, 0, 14, 0, 19, 30, 15, 0, 20}},
        {master::CoinValue[0], {5, 10, 20, 50, 100, 200, 50, 0}},
        {master::ChangeLargest, {500}},
        {master::CoinMask, {0x003F}},
        {master::KeyLargestCredit, {5000}},
        {master::CoinLargestCredit, {1000}},
        {master::TokenValue[0], {50, 100, 0}},
        {master::PriceTimeout, {60}},
        {master::BanknoteMask, {0x0007}},
        {master::ChangeOptions, {1}},
        {master::ExactChangeOptions, {0}},
        {master::OverpayTimeout, {30}},
        {master::MachineNumber, {104217, 1203, 39, 2}},
        {master::MachineCustomer, {5120, 12345, 4321, 54321}},

        // Masks of four bytes: cup, included, cold, jug, two tied to steps 2 and 3, free.
        {hot_drink::MaskCup[0], {0xFF, 0xFF, 0x03, 0}},
        {hot_drink::MaskIncluded[0], {0xFF, 0xFF, 0x03, 0}},
        {hot_drink::MaskCold[0], {0, 0, 0x02, 0}},
        {hot_drink::MaskJug[0], {0x8B, 0x05, 0, 0}},
        {hot_drink::MaskStep2[0], {0x2C, 0x48, 0, 0, 0, 0x40, 0, 0}},
        {hot_drink::MaskFree[0], {0, 0x01, 0, 0}},
        {hot_drink::JugPortions[0], {4, 4, 1, 3, 1, 1, 1, 5, 6, 1, 4, 1, 1, 1, 1, 1, 1, 1}},
        {hot_drink::TimeCoffeeWater, {45, 60, 40, 80, 20}},
        // Cooling unit, valves, mixers, powders, sugar box.
        {hot_drink::CoolingKind, {1, 4, 3, 5, 0}},
        {hot_drink::SelectionPrice[0], {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}},
        {hot_drink::BoilerSetPoint, {96, 60}},
        {hot_drink::ServiceValves, {50000, 12000, 40000, 3000, 8000, 8000}},
        {hot_drink::BrewingOptions, {0x01, 0x06}},
        {hot_drink::WashingDose, {60}},
        // By valve: mixer, first, second and third powder, drip time; by powder: double product; cold pairing.
        {hot_drink::ValveMixer[0],
         {1, 2, 3, 0, 0, 1, 3, 4, 0, 0, 2, 0, 5, 0, 0, 0, 0, 0, 0, 0, 15, 20, 20, 10, 0, 0, 0, 0, 0, 0, 0, 1, 2}},
        {hot_drink::IntermittenceOn[0], {10, 12, 8, 10, 10, 5, 6, 4, 5, 5, 0x06}},
        {hot_drink::UniqueChannel[0], {1, 2, 0, 20, 15, 0, 5, 0, 0}},
        {hot_drink::PreselectionProduct[0], {1, 2, 3, 0, 0, 1, 2, 3, 10, 12, 8, 0}},
        {hot_drink::PumpTime, {50}},
        {hot_drink::WaterTopUp, {20}},
        {hot_drink::ProbeLowest, {60, 200}},
        {hot_drink::PreselectionPlusTime[0], {15, 16, 12, 5}},

        {sector::TankSetPoint, {10, 4, 15}},
        {sector::DefrostEvery, {6, 10, 50, 0x02}},
    };
    return runs;
}

// A step is: valve, time, delay, mixer time, mixer delay, then time and delay of up to three powders.
const std::array<Recipe, selectionCount>& recipes() {
    static const std::array<Recipe, selectionCount> all{{
        {{{5, 45}}},                                                                  // espresso
        {{{5, 85}}},                                                                  // long coffee
        {{{5, 40}, {1, 30, 5, 38, 3, {{{26, 5}, {4, 6}}}}}},                          // cappuccino
        {{{5, 50}, {1, 14, 2, 20, 1, {{{12, 3}}}}}},                                  // coffee with a dash of milk
        {{{2, 62, 2, 72, 1, {{{46, 4}}}}}},                                           // chocolate
        {{{2, 45, 2, 52, 1, {{{34, 4}}}}, {1, 22, 3, 28, 2, {{{18, 4}}}}}},           // chocolate with milk
        {{{3, 65, 1, 70, 1, {{{0, 0}, {22, 3}}}}}},                                   // lemon tea
        {{{6, 90}}},                                                                  // fresh tea
        {{{4, 85}}},                                                                  // hot water
        {{{1, 45, 2, 52, 1, {{{14, 4}}}}}},                                           // decaffeinated coffee
        {{{1, 80, 2, 88, 1, {{{18, 4}}}}}},                                           // long decaffeinated coffee
        {{{1, 42, 2, 48, 1, {{{14, 4}}}}, {1, 30, 5, 38, 3, {{{26, 5}}}}}},           // decaffeinated cappuccino
        {{{1, 50, 2, 58, 1, {{{0, 0}, {0, 0}, {20, 4}}}}}},                           // barley coffee
        {{{2, 68, 2, 78, 1, {{{58, 4}, {8, 10}}}}}},                                  // strong chocolate
        {{{5, 40}, {2, 30, 3, 36, 2, {{{20, 4}}}}, {1, 24, 4, 30, 3, {{{18, 5}}}}}},  // mocha
        {{{3, 85, 2, 95, 1, {{{40, 4}}}}}},                                           // vegetable soup
        {{{3, 85, 2, 95, 1, {{{0, 0}, {0, 0}, {42, 4}}}}}},                           // tomato soup
        {{{4, 70, 1, 76, 1, {{{0, 0}, {24, 3}}}}}},                                   // cold lemon drink
    }};
    return all;
}

// How often each selection was sold; sectors follow a pattern of their own.
constexpr std::array<std::uint32_t, selectionCount> soldSelections{412, 236, 188, 97, 141, 66, 83, 52, 0,
                                                                   34,  18,  22,  11, 27,  45, 31, 19, 14};
constexpr std::uint32_t soldOfSector(int index) { return static_cast<std::uint32_t>((index * 37 + 11) % 23 + 2); }

// Alarms of the past: minute, hour, day, month, code; the newest is the last.
constexpr std::array<std::array<std::uint32_t, 5>, 4> pastAlarms{
    {{12, 8, 3, 11, 42}, {47, 14, 9, 11, 56}, {5, 23, 20, 12, 10}, {31, 7, 28, 12, 25}}};

// All inputs are active low.
constexpr std::uint32_t masterInputs = 0x7F;
const std::vector<std::uint32_t> hotDrinkInputs{0xDE, 0xD6, 0x3F};

void lay(World& world, const Run& run) {
    Setting parameter = run.first;
    for (const std::uint32_t value : run.values) {
        world.set(parameter, value);
        ++parameter.number;
    }
}

void laySettings(World& world) {
    for (const Run& run : settings()) lay(world, run);
    for (int selection = 0; selection < selectionCount; ++selection) {
        writeRecipe(world, selection, recipes()[static_cast<std::size_t>(selection)]);
    }
    // A price a row; the cheapest are on top.
    for (int index = 0; index < sectorCount; ++index) {
        world.set(sector::SectorPrice[index], static_cast<std::uint32_t>(18 + index / 8));
    }
    for (const CatalogueRow& row : Catalogue()) {
        if (!row.settings.hasCopies()) continue;
        for (int i = 0; i < row.settings.size(); ++i) world.set(CopyOf(row.settings[i]), world.get(row.settings[i]));
    }
}

void layState(World& world, const MachineOptions& options) {
    world.setBit(master::HotDrinkPresence, presentBit, world.isFitted(Board::HotDrink));
    world.setBit(master::SectorPresence, presentBit, world.isFitted(Board::Sector));
    world.set(master::MoneyDecimals, 2);
    world.set(master::MoneyDecimalsSetting, 2);
    world.set(master::MachineState, clockBit | eightLanguagesBit);
    world.set(master::Inputs, masterInputs);
    lay(world, {hot_drink::Inputs[0], hotDrinkInputs});

    const DateTime& clock = options.clock;
    const struct {
        Setting setting;
        Setting shown;
        int value;
    } parts[] = {{master::ClockSetHour, master::ClockHour, clock.hour},
                 {master::ClockSetMinute, master::ClockMinute, clock.minute},
                 {master::ClockSetDay, master::ClockDay, clock.day},
                 {master::ClockSetMonth, master::ClockMonth, clock.month},
                 {master::ClockSetYear, master::ClockYear, clock.year % 100}};
    for (const auto& part : parts) {
        world.set(part.setting, static_cast<std::uint32_t>(part.value));
        world.set(part.shown, static_cast<std::uint32_t>(part.value));
    }
}

void layAlarms(World& world, const DateTime& clock) {
    for (int slot = 0; slot < alarmCount; ++slot) {
        world.set(master::AlarmRing[slot * alarmRecord + alarmRecord - 1], noAlarmCode);
    }
    int place = 0;
    for (const auto& [minute, hour, day, month, code] : pastAlarms) {
        const auto lastYear = static_cast<std::uint32_t>(std::max(clock.year % 100 - 1, 0));
        for (const std::uint32_t value : {minute, hour, day, month, lastYear, code}) {
            world.set(master::AlarmRing[place++], value);
        }
    }
    world.set(master::AlarmNewest, static_cast<std::uint32_t>(pastAlarms.size() - 1));
}

// The totals are the sums of the counters, so that the pages agree with each other.
void laySales(World& world) {
    std::uint32_t vends = 0;
    std::uint32_t income = 0;
    const auto sold = [&](const Setting& counter, const Setting& priceNumber, std::uint32_t count) {
        if (!world.isFitted(counter.board)) return;
        world.set(counter, count);
        vends += count;
        income += count * world.get(master::Price[world.priceIndex(priceNumber)]);
    };
    for (int k = 0; k < selectionCount; ++k) {
        sold(hot_drink::SelectionVends[k], hot_drink::SelectionPrice[k], soldSelections[static_cast<std::size_t>(k)]);
    }
    for (int s = 0; s < sectorCount; ++s) sold(sector::SectorVends[s], sector::SectorPrice[s], soldOfSector(s));

    constexpr std::uint32_t earlierVends = 14175;
    constexpr std::uint32_t earlierIncome = 978450;
    constexpr int hotWater = 8;
    const std::uint32_t freeVends = world.isFitted(Board::HotDrink) ? 38 : 0;
    world.set(master::TotalVends, vends);
    world.set(master::TotalTakings, income);
    world.set(master::LifetimeVends, vends + earlierVends);
    world.set(master::LifetimeTakings, income + earlierIncome);
    world.set(master::TotalFree, freeVends);
    world.set(hot_drink::SelectionFree[hotWater], freeVends);
    if (world.isFitted(Board::HotDrink)) {
        lay(world, {hot_drink::SelectionJugs[0], {14, 6, 0, 3, 0, 0, 0, 2, 0, 0, 1}});
        world.set(master::TotalJugs, 26);
        lay(world, {master::TotalPreselection1, {87, 87, 45, 23, 12}});
    }
    lay(world, {master::CoinCount[0], {214, 388, 530, 611, 402, 97, 12, 0, 0}});
    lay(world, {master::MdbAuditAmount[0], {98150, 4000, 31240, 6500, 22000, 18450}});
}

}  // namespace

void setInitialValues(World& world, const MachineOptions& options) {
    laySettings(world);
    layState(world, options);
    layAlarms(world, options.clock);
    laySales(world);
}

}  // namespace kestrel::simulator

// What stands in the machine's parameters when it is switched on, as tables.
// Amounts are in hundredths, times in tenths of a second.
#include "simulator/initial_values.h"

#include <algorithm>
#include <vector>

#include "simulator/alarms.h"
#include "simulator/recipe.h"

namespace kestrel::simulator {
namespace {

constexpr auto onMaster = Board::Master;
constexpr auto onHotDrink = Board::HotDrink;
constexpr auto onSector = Board::Sector;

// Values for consecutive parameters.
struct Run {
    Board board;
    int first;
    std::vector<std::uint32_t> values;
};

const std::vector<Run>& settings() {
    static const std::vector<Run> runs{
        // Prices of the four preselections, the thirty prices, prices of the four plus preselections.
        {onMaster, 8, {0, 5, 5, 10}},
        {onMaster, 16, {50, 60, 70, 65, 60,  65,  50,  70,  20,  55,  65,  75,  50,  75,  90,
                        80, 80, 60, 80, 100, 120, 150, 180, 220, 250, 280, 300, 350, 400, 500}},
        {onMaster, 76, {5, 5, 10, 10}},
        {onMaster, 84, {0x20, mdbBit}},
        {onMaster, 88, {5,  5,  10, 5, 5, 5,  5,  10, 0,  5,  5,  10, 5,  10, 10,
                        10, 10, 5,  0, 0, 10, 10, 20, 20, 20, 20, 20, 20, 20, 20}},
        {onMaster, 148, {0, 5, 5, 5}},
        {onMaster, 156, {5}},
        // Bands, minutes before hours and beginnings of both bands before their ends: on from 6:30 to 13:00 and from
        // 13:00 to 22:45, washing at 5:45 and 23:00, discounts from 14:00 to 15:30 and from 19:00 to 20:00.
        {onMaster, 199, {30, 6, 0, 13, 0, 13, 45, 22, 45, 5, 0, 23, 0, 14, 0, 19, 30, 15, 0, 20}},
        {onMaster, master::coinValue, {5, 10, 20, 50, 100, 200, 50, 0}},
        {onMaster, 328, {500}},
        {onMaster, 330, {0x003F}},
        {onMaster, 332, {5000}},
        {onMaster, 334, {1000}},
        {onMaster, 336, {50, 100, 0}},
        {onMaster, 342, {60}},
        {onMaster, 344, {0x0007}},
        {onMaster, 346, {1}},
        {onMaster, 348, {0}},
        {onMaster, 354, {30}},
        {onMaster, 356, {104217, 1203, 39, 2}},
        {onMaster, 361, {5120, 12345, 4321, 54321}},

        // Masks of four bytes: cup, included, cold, jug, two tied to steps 2 and 3, free.
        {onHotDrink, 1063, {0xFF, 0xFF, 0x03, 0}},
        {onHotDrink, 1071, {0xFF, 0xFF, 0x03, 0}},
        {onHotDrink, 1079, {0, 0, 0x02, 0}},
        {onHotDrink, hot_drink::jugMask, {0x8B, 0x05, 0, 0}},
        {onHotDrink, 1127, {0x2C, 0x48, 0, 0, 0, 0x40, 0, 0}},
        {onHotDrink, hot_drink::freeMask, {0, 0x01, 0, 0}},
        {onHotDrink, 1095, {4, 4, 1, 3, 1, 1, 1, 5, 6, 1, 4, 1, 1, 1, 1, 1, 1, 1}},
        {onHotDrink, 1143, {45, 60, 40, 80, 20}},
        // Cooling unit, valves, mixers, powders, sugar box.
        {onHotDrink, 1153, {1, 4, 3, 5, 0}},
        {onHotDrink, hot_drink::priceNumber, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}},
        {onHotDrink, hot_drink::boilerSetPoint, {96, 60}},
        {onHotDrink, 1204, {50000, 12000, 40000, 3000, 8000, 8000}},
        {onHotDrink, 1298, {0x01, 0x06}},
        {onHotDrink, 1302, {60}},
        // By valve: mixer, first, second and third powder, drip time; by powder: double product; cold pairing.
        {onHotDrink, 1304, {1, 2, 3, 0,  0,  1,  3,  4, 0, 0, 2, 0, 5, 0, 0, 0, 0,
                            0, 0, 0, 15, 20, 20, 10, 0, 0, 0, 0, 0, 0, 0, 1, 2}},
        {onHotDrink, 1370, {10, 12, 8, 10, 10, 5, 6, 4, 5, 5, 0x06}},
        {onHotDrink, 1394, {1, 2, 0, 20, 15, 0, 5, 0, 0}},
        {onHotDrink, 1412, {1, 2, 3, 0, 0, 1, 2, 3, 10, 12, 8, 0}},
        {onHotDrink, 1439, {50}},
        {onHotDrink, 1441, {20}},
        {onHotDrink, 1443, {60, 200}},
        {onHotDrink, 1447, {15, 16, 12, 5}},

        {onSector, sector::tankSetPoint, {10, 4, 15}},
        {onSector, 56, {6, 10, 50, 0x02}},
    };
    return runs;
}

// The boards keep most settings twice: `count` parameters from `first`, and the same again from `copy`.
struct Copy {
    Board board;
    int first;
    int count;
    int copy;
};
constexpr std::array<Copy, 45> copies{
    {{onMaster, 8, 4, 12},        {onMaster, 16, 30, 46},       {onMaster, 76, 4, 80},
     {onMaster, 84, 2, 86},       {onMaster, 88, 30, 118},      {onMaster, 148, 4, 152},
     {onMaster, 156, 1, 157},     {onMaster, 199, 20, 219},     {onMaster, 312, 8, 320},
     {onMaster, 328, 1, 329},     {onMaster, 330, 1, 331},      {onMaster, 332, 1, 333},
     {onMaster, 334, 1, 335},     {onMaster, 336, 3, 339},      {onMaster, 342, 1, 343},
     {onMaster, 344, 1, 345},     {onMaster, 346, 1, 347},      {onMaster, 348, 1, 349},
     {onMaster, 350, 1, 351},     {onMaster, 354, 1, 355},      {onMaster, 359, 1, 360},
     {onMaster, 362, 3, 365},     {onHotDrink, 1063, 4, 1067},  {onHotDrink, 1071, 4, 1075},
     {onHotDrink, 1079, 4, 1083}, {onHotDrink, 1087, 4, 1091},  {onHotDrink, 1127, 8, 1135},
     {onHotDrink, 1143, 5, 1148}, {onHotDrink, 1153, 5, 1158},  {onHotDrink, 1163, 18, 1181},
     {onHotDrink, 1199, 2, 1201}, {onHotDrink, 1204, 6, 1210},  {onHotDrink, 1298, 2, 1300},
     {onHotDrink, 1302, 1, 1303}, {onHotDrink, 1304, 33, 1337}, {onHotDrink, 1370, 11, 1382},
     {onHotDrink, 1394, 9, 1403}, {onHotDrink, 1412, 12, 1424}, {onHotDrink, 1439, 1, 1440},
     {onHotDrink, 1441, 1, 1442}, {onHotDrink, 1443, 2, 1445},  {onHotDrink, 1447, 4, 1451},
     {onHotDrink, 1455, 4, 1459}, {onSector, 1, 48, 216},       {onSector, 51, 9, 266}}};

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
    int parameter = run.first;
    for (const std::uint32_t value : run.values) world.set(run.board, parameter++, value);
}

void laySettings(World& world) {
    for (const Run& run : settings()) lay(world, run);
    for (int selection = 0; selection < selectionCount; ++selection) {
        writeRecipe(world, selection, recipes()[static_cast<std::size_t>(selection)]);
    }
    // A price a row; the cheapest are on top.
    for (int index = 0; index < sectorCount; ++index) {
        world.set(onSector, sector::priceNumber + index, static_cast<std::uint32_t>(18 + index / 8));
    }
    for (const Copy& copy : copies) {
        for (int i = 0; i < copy.count; ++i)
            world.set(copy.board, copy.copy + i, world.get(copy.board, copy.first + i));
    }
}

void layState(World& world, const MachineOptions& options) {
    world.setBit(onMaster, master::hotDrinkPresence, presentBit, world.isFitted(onHotDrink));
    world.setBit(onMaster, master::sectorPresence, presentBit, world.isFitted(onSector));
    world.set(onMaster, master::decimals, 2);
    world.set(onMaster, master::decimalsSetting, 2);
    world.set(onMaster, master::state, clockBit | eightLanguagesBit);
    world.set(onMaster, master::inputs, masterInputs);
    lay(world, {onHotDrink, hot_drink::inputs, hotDrinkInputs});

    const DateTime& clock = options.clock;
    const struct {
        int setting;
        int shown;
        int value;
    } parts[] = {{master::setHour, master::hour, clock.hour},
                 {master::setMinute, master::minute, clock.minute},
                 {master::setDay, master::day, clock.day},
                 {master::setMonth, master::month, clock.month},
                 {master::setYear, master::year, clock.year % 100}};
    for (const auto& part : parts) {
        world.set(onMaster, part.setting, static_cast<std::uint32_t>(part.value));
        world.set(onMaster, part.shown, static_cast<std::uint32_t>(part.value));
    }
}

void layAlarms(World& world, const DateTime& clock) {
    for (int slot = 0; slot < master::alarmCount; ++slot) {
        world.set(onMaster, master::alarms + slot * master::alarmRecord + master::alarmRecord - 1, noAlarmCode);
    }
    int parameter = master::alarms;
    for (const auto& [minute, hour, day, month, code] : pastAlarms) {
        const auto lastYear = static_cast<std::uint32_t>(std::max(clock.year % 100 - 1, 0));
        for (const std::uint32_t value : {minute, hour, day, month, lastYear, code}) {
            world.set(onMaster, parameter++, value);
        }
    }
    world.set(onMaster, master::newestAlarm, static_cast<std::uint32_t>(pastAlarms.size() - 1));
}

// The totals are the sums of the counters, so that the pages agree with each other.
void laySales(World& world) {
    std::uint32_t vends = 0;
    std::uint32_t income = 0;
    const auto sold = [&](Board board, int counter, int priceNumber, std::uint32_t count) {
        if (!world.isFitted(board)) return;
        world.set(board, counter, count);
        vends += count;
        income += count * world.get(onMaster, master::price + static_cast<int>(world.get(board, priceNumber)));
    };
    for (int k = 0; k < selectionCount; ++k) {
        sold(onHotDrink, hot_drink::vends + k, hot_drink::priceNumber + k, soldSelections[static_cast<std::size_t>(k)]);
    }
    for (int s = 0; s < sectorCount; ++s) sold(onSector, sector::vends + s, sector::priceNumber + s, soldOfSector(s));

    constexpr std::uint32_t earlierVends = 14175;
    constexpr std::uint32_t earlierIncome = 978450;
    constexpr int hotWater = 8;
    const std::uint32_t freeVends = world.isFitted(onHotDrink) ? 38 : 0;
    world.set(onMaster, master::vends, vends);
    world.set(onMaster, master::income, income);
    world.set(onMaster, master::lifetimeVends, vends + earlierVends);
    world.set(onMaster, master::lifetimeIncome, income + earlierIncome);
    world.set(onMaster, master::freeVends, freeVends);
    world.set(onHotDrink, hot_drink::freeVends + hotWater, freeVends);
    if (world.isFitted(onHotDrink)) {
        lay(world, {onHotDrink, hot_drink::jugVends, {14, 6, 0, 3, 0, 0, 0, 2, 0, 0, 1}});
        world.set(onMaster, master::jugVends, 26);
        lay(world, {onMaster, master::preselectedVends, {87, 87, 45, 23, 12}});
    }
    lay(world, {onMaster, master::coinCounter, {214, 388, 530, 611, 402, 97, 12, 0, 0}});
    lay(world, {onMaster, master::intoTubes, {98150, 4000, 31240, 6500, 22000, 18450}});
}

}  // namespace

void setInitialValues(World& world, const MachineOptions& options) {
    laySettings(world);
    layState(world, options);
    layAlarms(world, options.clock);
    laySales(world);
}

}  // namespace kestrel::simulator

// What the machine does by itself: sales, alarms, inputs and temperatures.
// The pages that show them are only as trustworthy as these numbers are consistent.
#include <set>
#include <tuple>

#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

constexpr Micros hour = 60 * minute;

class LifeTest : public SimulatorTest {
  protected:
    LifeTest() { options.moving = true; }

    struct Books {
        std::uint32_t paid, free, income, discounts, overpay, key, coins = 0;
        std::uint32_t countedPaid = 0, countedFree = 0, worth = 0;
    };
    // What the totals say, and what the counters of the single products say.
    static Books booksOf(const Machine& machine) {
        const auto total = [&](int n) { return machine.value(Master, n); };
        Books books{total(160), total(161), total(164), total(165), total(166), total(198)};
        for (int c = 0; c < 8; ++c) books.coins += total(177 + c) * total(312 + c);
        const auto add = [&](Board board, int paid, int free, int price) {
            const auto number = (total(84) & 1) != 0 ? 0 : static_cast<int>(machine.value(board, price));
            books.countedPaid += machine.value(board, paid);
            books.countedFree += machine.value(board, free);
            books.worth += machine.value(board, paid) * total(16 + number);
        };
        for (int k = 0; k < 18; ++k) add(HotDrink, 1216 + k, 1234 + k, 1163 + k);
        for (int s = 0; s < 48; ++s) add(Sector, 71 + s, 119 + s, 1 + s);
        return books;
    }
    static void clearBooks(Bench& bench) {
        bench.write(Master, 4, 1);
        bench.setValue(Master, 198, 0);
    }
    static std::uint32_t vends(const Machine& machine) {
        return machine.value(Master, 160) + machine.value(Master, 161);
    }
    static void testSectors(Bench& bench) {
        bench.write(Sector, 285, 255);
        bench.write(Sector, 284, 1);
    }
};

TEST_F(LifeTest, TotalsAgreeWithCountersFromTheStart) {
    const Machine machine(options);
    const Books books = booksOf(machine);
    EXPECT_GT(books.paid, 500U);
    EXPECT_EQ(books.paid, books.countedPaid);
    EXPECT_EQ(books.free, books.countedFree);
    EXPECT_EQ(books.income, books.worth);
    EXPECT_GT(machine.value(Master, 159), books.paid);
    EXPECT_GT(machine.value(Master, 163), books.income);
}

TEST_F(LifeTest, SalesKeepTheBooksRight) {
    const struct {
        const char* what;
        std::uint32_t options84;
        std::uint32_t payment;
        bool discounts;
    } cases[] = {{"coins alone", 0, 1, false},
                 {"payment by bus", 0, 4, false},
                 {"everything at price 1", 1, 1, false},
                 {"in the discount band", 0, 1, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Bench bench(options);
        clearBooks(bench);
        bench.setValue(Master, 84, c.options84);
        bench.setValue(Master, 85, c.payment);
        for (int n = 211; n <= 218; ++n) bench.setValue(Master, n, 0);
        if (c.discounts) bench.setValue(Master, 216, 24);
        bench.advance(10 * hour);
        const Books books = booksOf(bench);
        EXPECT_GE(vends(bench), 600U);
        EXPECT_LE(vends(bench), 1800U);
        EXPECT_GT(books.free, 0U);
        EXPECT_EQ(books.paid, books.countedPaid);
        EXPECT_EQ(books.free, books.countedFree);
        EXPECT_EQ(books.income + books.discounts, books.worth);
        EXPECT_EQ(books.discounts > 0, c.discounts);
        if (c.payment == 1) {
            EXPECT_EQ(books.coins, books.income + books.overpay);
            EXPECT_EQ(books.key, 0U);
        } else {
            EXPECT_GE(books.coins + books.key, books.income);
            EXPECT_GT(books.key, 0U);
        }
    }
}

TEST_F(LifeTest, NothingIsSoldInTestModeOrByAMachineAtRest) {
    Bench bench(options);
    clearBooks(bench);
    testSectors(bench);
    bench.wait(250 * second);
    EXPECT_EQ(vends(bench), 0U);
    bench.wait(250 * second);
    EXPECT_GT(vends(bench), 0U);

    options.moving = false;
    Machine resting(options);
    const auto look = [&] {
        std::vector<std::uint32_t> values;
        for (const int n : {160, 164, 249, 251}) values.push_back(resting.value(Master, n));
        for (int n = 1288; n <= 1297; ++n) values.push_back(resting.value(HotDrink, n));
        for (int n = 287; n <= 290; ++n) values.push_back(resting.value(Sector, n));
        return values;
    };
    const auto before = look();
    resting.advance(10 * hour);
    EXPECT_EQ(look(), before);
    EXPECT_EQ(resting.value(Master, 245), 20U) << "the clock goes on";
}

TEST_F(LifeTest, NewAlarmsGoRoundTheRingWithTheirTime) {
    Machine machine(options);
    EXPECT_EQ(machine.value(Master, 251), 3U);
    for (int slot = 0; slot < 10; ++slot)
        EXPECT_EQ(machine.value(Master, 257 + 6 * slot) <= 137, slot <= 3) << "unused slots must end the list";
    std::set<std::uint32_t> slots;
    std::uint32_t last = 3;
    for (int passed = 1; passed <= 180; ++passed) {
        machine.advance(passed * minute - 1);
        const auto slot = machine.value(Master, 251);
        if (slot == last) continue;
        EXPECT_EQ(slot, (last + 1) % 10);
        last = slot;
        slots.insert(slot);
        const int record = 252 + 6 * static_cast<int>(slot);
        EXPECT_LE(machine.value(Master, record + 5), 137U);
        for (int part = 0; part < 5; ++part)
            EXPECT_EQ(machine.value(Master, record + part), machine.value(Master, 244 + part)) << part;
    }
    EXPECT_EQ(slots.size(), 10U);
}

// As the program shows it: a signed high byte, plus the correction, which counts from 5.
TEST_F(LifeTest, TankIsKeptBetweenSetPointAndDelta) {
    Bench bench(options);
    const auto measured = [&] {
        const auto raw = static_cast<std::int16_t>(bench.value(Sector, 287));
        return raw / 256.0 + static_cast<double>(bench.value(Sector, 52)) - 5;
    };
    bench.setValue(Sector, 51, 8);
    bench.setValue(Sector, 53, 20);
    bench.wait(hour);
    double lowest = 100;
    double highest = -100;
    for (int passed = 0; passed < 240; ++passed) {
        bench.wait(minute);
        lowest = std::min(lowest, measured());
        highest = std::max(highest, measured());
    }
    EXPECT_NEAR(lowest, 8, 0.3);
    EXPECT_NEAR(highest, 10, 0.3);

    bench.setValue(Sector, 51, 16);
    bench.wait(4 * hour);
    EXPECT_GT(measured(), 16) << "switched off";

    testSectors(bench);
    bench.write(Sector, 285, 0x80);
    bench.write(Sector, 286, 0);
    bench.write(Sector, 284, 2);
    const double before = measured();
    bench.wait(60 * second);
    EXPECT_LT(measured(), before - 1) << "the PC drives the compressor";
}

// The pages show these within their limits; a value outside would be clamped, or written back to the board.
TEST_F(LifeTest, FirstValuesLieWithinTheirLimits) {
    const Machine machine(options);
    const struct {
        Board board;
        int first, count, step;
        std::uint32_t lowest, highest;
    } limits[] = {
        {HotDrink, 1154, 1, 1, 4, 4},   {HotDrink, 1155, 1, 1, 0, 3},    {HotDrink, 1156, 1, 1, 0, 5},
        {HotDrink, 7, 18, 1, 1, 6},     {HotDrink, 39, 18, 1, 0, 4},     {HotDrink, 71, 18, 1, 0, 4},
        {HotDrink, 1095, 18, 1, 1, 99}, {HotDrink, 1163, 18, 1, 0, 29},  {HotDrink, 1334, 3, 1, 0, 3},
        {Master, 200, 10, 2, 0, 23},    {Master, 199, 10, 2, 0, 59},     {Master, 363, 1, 1, 0, 9999},
        {Master, 358, 1, 1, 0, 999},    {Master, 342, 1, 1, 20, 0xFFFF},
    };
    for (const auto& c : limits)
        for (int n = c.first; n < c.first + c.count * c.step; n += c.step) {
            EXPECT_GE(machine.value(c.board, n), c.lowest) << n;
            EXPECT_LE(machine.value(c.board, n), c.highest) << n;
        }
    int brewers = 0;
    for (int k = 0; k < 18; ++k) brewers += machine.value(HotDrink, 7 + k) > 4 ? 1 : 0;
    EXPECT_GE(brewers, 2);
    // A setting and its copy agree, also where the copy lies apart.
    const std::tuple<Board, int, int> copies[] = {{Master, 45, 75},       {Master, 363, 366}, {HotDrink, 1131, 1139},
                                                  {HotDrink, 1336, 1369}, {Sector, 48, 263},  {Sector, 59, 274}};
    for (const auto& [board, setting, copy] : copies)
        EXPECT_EQ(machine.value(board, setting), machine.value(board, copy)) << copy;
}

}  // namespace
}  // namespace kestrel::simulator::tests

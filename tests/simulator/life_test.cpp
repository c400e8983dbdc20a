// What the machine does by itself: sales, alarms, inputs and temperatures.
// The pages that show them are only as trustworthy as these numbers are consistent.
#include <gtest/gtest.h>

#include <set>

#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

constexpr auto master = Board::Master;
constexpr auto hotDrink = Board::HotDrink;
constexpr auto sector = Board::Sector;
constexpr Micros hour = 60 * minute;

class LifeTest : public testing::Test {
  protected:
    struct Books {
        std::uint32_t paid = 0, free = 0, income = 0, discounts = 0, overpay = 0, key = 0, coins = 0;
        std::uint32_t countedPaid = 0, countedFree = 0, worth = 0;
    };
    // What the totals say, and what the counters of the single products say.
    static Books booksOf(const Machine& machine) {
        Books books;
        books.paid = machine.value(master, 160);
        books.free = machine.value(master, 161);
        books.income = machine.value(master, 164);
        books.discounts = machine.value(master, 165);
        books.overpay = machine.value(master, 166);
        books.key = machine.value(master, 198);
        for (int c = 0; c < 8; ++c) books.coins += machine.value(master, 177 + c) * machine.value(master, 312 + c);
        const auto add = [&](Board board, int paid, int free, int price) {
            const bool all = (machine.value(master, 84) & 1) != 0;
            const auto number = all ? 0 : machine.value(board, price);
            books.countedPaid += machine.value(board, paid);
            books.countedFree += machine.value(board, free);
            books.worth += machine.value(board, paid) * machine.value(master, 16 + static_cast<int>(number));
        };
        for (int k = 0; k < 18; ++k) add(hotDrink, 1216 + k, 1234 + k, 1163 + k);
        for (int s = 0; s < 48; ++s) add(sector, 71 + s, 119 + s, 1 + s);
        return books;
    }
    static void clearBooks(Machine& machine) {
        machine.send(0, writeFrame(master, Installation::address(master, 4), 1, 1));
        machine.advance(second);
        machine.setValue(master, 198, 0);
    }
    static void setDiscountBand(Machine& machine, std::uint32_t from, std::uint32_t to) {
        machine.setValue(master, 212, from);
        machine.setValue(master, 211, 0);
        machine.setValue(master, 216, to);
        machine.setValue(master, 215, 0);
        machine.setValue(master, 214, 0);
        machine.setValue(master, 213, 0);
        machine.setValue(master, 218, 0);
        machine.setValue(master, 217, 0);
    }
    Installation installation;
};

TEST_F(LifeTest, TotalsAgreeWithCountersFromTheStart) {
    const Machine machine(installation.options());
    const Books books = booksOf(machine);
    EXPECT_GT(books.paid, 500U);
    EXPECT_EQ(books.paid, books.countedPaid);
    EXPECT_EQ(books.free, books.countedFree);
    EXPECT_EQ(books.income, books.worth);
    EXPECT_GT(machine.value(master, 159), books.paid);
    EXPECT_GT(machine.value(master, 163), books.income);
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
        Machine machine(installation.options());
        clearBooks(machine);
        machine.setValue(master, 84, c.options84);
        machine.setValue(master, 85, c.payment);
        setDiscountBand(machine, c.discounts ? 0 : 3, c.discounts ? 24 : 3);
        machine.advance(10 * hour);
        const Books books = booksOf(machine);
        EXPECT_GE(books.paid + books.free, 600U) << c.what;
        EXPECT_LE(books.paid + books.free, 1800U) << c.what;
        EXPECT_GT(books.free, 0U) << c.what;
        EXPECT_EQ(books.paid, books.countedPaid) << c.what;
        EXPECT_EQ(books.free, books.countedFree) << c.what;
        EXPECT_EQ(books.income + books.discounts, books.worth) << c.what;
        EXPECT_EQ(books.discounts > 0, c.discounts) << c.what;
        if (c.payment == 1) {
            EXPECT_EQ(books.coins, books.income + books.overpay) << c.what;
            EXPECT_EQ(books.key, 0U) << c.what;
        } else {
            EXPECT_GE(books.coins + books.key, books.income) << c.what;
            EXPECT_GT(books.key, 0U) << c.what;
        }
    }
}

TEST_F(LifeTest, NothingIsSoldInTestModeOrByAMachineAtRest) {
    Machine machine(installation.options());
    Pc pc(machine);
    clearBooks(machine);
    pc.now = second;
    pc.write(sector, 285, 255);
    pc.write(sector, 284, 1);
    pc.wait(250 * second);
    EXPECT_EQ(machine.value(master, 160) + machine.value(master, 161), 0U);
    pc.wait(250 * second);
    EXPECT_GT(machine.value(master, 160) + machine.value(master, 161), 0U);

    MachineOptions still = installation.options();
    still.moving = false;
    Machine resting(still);
    std::vector<std::uint32_t> before;
    const auto look = [&] {
        std::vector<std::uint32_t> values;
        for (const int n : {160, 164, 249, 251}) values.push_back(resting.value(master, n));
        for (int n = 1288; n <= 1297; ++n) values.push_back(resting.value(hotDrink, n));
        for (int n = 287; n <= 290; ++n) values.push_back(resting.value(sector, n));
        return values;
    };
    before = look();
    resting.advance(10 * hour);
    EXPECT_EQ(look(), before);
    EXPECT_EQ(resting.value(master, 245), 20U) << "the clock goes on";
}

TEST_F(LifeTest, NewAlarmsGoRoundTheRingWithTheirTime) {
    Machine machine(installation.options());
    EXPECT_EQ(machine.value(master, 251), 3U);
    for (int slot = 0; slot < 10; ++slot) {
        EXPECT_EQ(machine.value(master, 257 + 6 * slot) <= 137, slot <= 3) << "unused slots must end the list";
    }
    std::set<std::uint32_t> slots;
    std::uint32_t last = 3;
    for (int passed = 1; passed <= 180; ++passed) {
        machine.advance(passed * minute - 1);
        const auto slot = machine.value(master, 251);
        if (slot == last) continue;
        EXPECT_EQ(slot, (last + 1) % 10);
        last = slot;
        slots.insert(slot);
        const int record = 252 + 6 * static_cast<int>(slot);
        EXPECT_LE(machine.value(master, record + 5), 137U);
        const std::array<std::uint32_t, 5> stored{machine.value(master, record), machine.value(master, record + 1),
                                                  machine.value(master, record + 2), machine.value(master, record + 3),
                                                  machine.value(master, record + 4)};
        EXPECT_EQ(stored, (std::array<std::uint32_t, 5>{machine.value(master, 244), machine.value(master, 245),
                                                        machine.value(master, 246), machine.value(master, 247),
                                                        machine.value(master, 248)}));
    }
    EXPECT_EQ(slots.size(), 10U);
}

// As the program shows it: a signed high byte, plus the correction, which counts from 5.
TEST_F(LifeTest, TankIsKeptBetweenSetPointAndDelta) {
    Machine machine(installation.options());
    const auto measured = [&] {
        const auto raw = static_cast<std::int16_t>(machine.value(sector, 287));
        return raw / 256.0 + static_cast<double>(machine.value(sector, 52)) - 5;
    };
    machine.setValue(sector, 51, 8);
    machine.setValue(sector, 53, 20);
    machine.advance(hour);
    double lowest = 100;
    double highest = -100;
    for (int passed = 0; passed < 240; ++passed) {
        machine.advance(hour + passed * minute);
        lowest = std::min(lowest, measured());
        highest = std::max(highest, measured());
    }
    EXPECT_NEAR(lowest, 8, 0.3);
    EXPECT_NEAR(highest, 10, 0.3);

    machine.setValue(sector, 51, 16);
    machine.advance(9 * hour);
    EXPECT_GT(measured(), 16) << "switched off";

    Pc pc(machine);
    pc.now = 9 * hour;
    pc.write(sector, 285, 255);
    pc.write(sector, 284, 1);
    pc.write(sector, 285, 0x80);
    pc.write(sector, 286, 0);
    pc.write(sector, 284, 2);
    const double before = measured();
    pc.wait(60 * second);
    EXPECT_LT(measured(), before - 1) << "the PC drives the compressor";
}

// The pages show these within their limits; a value outside would be clamped, or written back to the board.
TEST_F(LifeTest, FirstValuesLieWithinTheirLimits) {
    const Machine machine(installation.options());
    const auto valves = machine.value(hotDrink, 1154);
    EXPECT_LE(valves, 4U);
    EXPECT_LE(machine.value(hotDrink, 1155), 3U);
    EXPECT_LE(machine.value(hotDrink, 1156), 5U);
    int brewers = 0;
    for (int k = 0; k < 18; ++k) {
        EXPECT_NE(machine.value(hotDrink, 7 + k), 0U) << k;
        EXPECT_LE(machine.value(hotDrink, 7 + k), valves + 2) << k;
        EXPECT_LE(machine.value(hotDrink, 39 + k), valves) << k;
        EXPECT_LE(machine.value(hotDrink, 71 + k), valves) << k;
        EXPECT_GE(machine.value(hotDrink, 1095 + k), 1U) << k;
        EXPECT_LE(machine.value(hotDrink, 1095 + k), 99U) << k;
        EXPECT_LT(machine.value(hotDrink, 1163 + k), 30U) << k;
        brewers += machine.value(hotDrink, 7 + k) > valves ? 1 : 0;
    }
    EXPECT_GE(brewers, 2);
    for (int k = 0; k < 3; ++k) EXPECT_LE(machine.value(hotDrink, 1334 + k), 3U);
    for (int i = 200; i <= 218; i += 2) {
        EXPECT_LE(machine.value(master, i), 23U);
        EXPECT_LE(machine.value(master, i - 1), 59U);
    }
    EXPECT_LE(machine.value(master, 363), 9999U);
    EXPECT_LE(machine.value(master, 358), 999U);
    EXPECT_GE(machine.value(master, 342), 20U);
    // A setting and its copy agree, also where the copy lies apart.
    EXPECT_EQ(machine.value(master, 16 + 29), machine.value(master, 46 + 29));
    EXPECT_EQ(machine.value(master, 363), machine.value(master, 366));
    EXPECT_EQ(machine.value(hotDrink, 1131), machine.value(hotDrink, 1139));
    EXPECT_EQ(machine.value(hotDrink, 1336), machine.value(hotDrink, 1369));
    EXPECT_EQ(machine.value(sector, 48), machine.value(sector, 263));
    EXPECT_EQ(machine.value(sector, 59), machine.value(sector, 274));
}

}  // namespace
}  // namespace kestrel::simulator::tests

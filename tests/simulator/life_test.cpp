// What the machine does by itself: sales, alarms, inputs and temperatures.
// The pages that show them are only as trustworthy as these numbers are consistent.
#include <set>

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
        EXPECT_EQ(books.paid, books.countedPaid);
        EXPECT_EQ(books.free, books.countedFree);
        EXPECT_EQ(books.income + books.discounts, books.worth);
        return books;
    }
    static void clearBooks(Bench& bench) {
        bench.write(Master, 4, 1);
        bench.setValue(Master, 198, 0);
    }
};

TEST_F(LifeTest, SalesKeepTheBooksRight) {
    const Machine machine(options);
    const Books books = booksOf(machine);
    EXPECT_GT(books.paid, 500U);
    EXPECT_GT(machine.value(Master, 159), books.paid);
    EXPECT_GT(machine.value(Master, 163), books.income);
    struct Row {
        const char* what;
        std::uint32_t options84, payment;
        bool discounts;
    };
    for (const Row& row : {Row{"coins alone", 0, 1, false}, Row{"payment by bus", 0, 4, false},
                           Row{"everything at price 1", 1, 1, false}, Row{"in the discount band", 0, 1, true}}) {
        SCOPED_TRACE(row.what);
        Bench bench(options);
        clearBooks(bench);
        bench.setValue(Master, 84, row.options84);
        bench.setValue(Master, 85, row.payment);
        for (int n = 211; n <= 218; ++n) bench.setValue(Master, n, 0);
        if (row.discounts) bench.setValue(Master, 216, 24);
        bench.advance(10 * hour);
        const Books sold = booksOf(bench);
        EXPECT_GE(sold.paid + sold.free, 600U);
        EXPECT_LE(sold.paid + sold.free, 1800U);
        EXPECT_GT(sold.free, 0U);
        EXPECT_EQ(sold.discounts > 0, row.discounts);
        EXPECT_EQ(sold.key > 0, row.payment == 4);
        if (row.payment == 1)
            EXPECT_EQ(sold.coins, sold.income + sold.overpay);
        else
            EXPECT_GE(sold.coins + sold.key, sold.income);
    }
}

TEST_F(LifeTest, NewAlarmsGoRoundTheRingWithTheirTime) {
    Machine machine(options);
    std::set<std::uint32_t> slots;
    std::uint32_t last = 3;
    for (int slot = 0; slot < 10; ++slot)
        EXPECT_EQ(machine.value(Master, 257 + 6 * slot) <= 137, slot <= 3) << "unused slots must end the list";
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
    bench.play("2.51=8 2.53=20");
    bench.wait(hour);
    std::set<double> seen;
    for (int passed = 0; passed < 240; ++passed, bench.wait(minute)) seen.insert(measured());
    EXPECT_NEAR(*seen.begin(), 8, 0.3);
    EXPECT_NEAR(*seen.rbegin(), 10, 0.3);

    bench.play("2.51=16");
    bench.wait(4 * hour);
    const double before = measured();
    EXPECT_GT(before, 16) << "switched off";
    bench.play("2.285=255 2.284=1 2.285=128 2.286=0 2.284=2 +60");
    EXPECT_LT(measured(), before - 1) << "the PC drives the compressor";
}

}  // namespace
}  // namespace kestrel::simulator::tests

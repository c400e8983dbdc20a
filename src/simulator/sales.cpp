// Customers and what they pay.
// Prices, discounts, coins and bands are the machine's own settings, so changing one changes the next sale.
#include "simulator/sales.h"

#include <algorithm>

namespace kestrel::simulator {
namespace {

constexpr int coinCount = 8;

// The bit of a selection in a group of four mask bytes.
bool maskBit(const World& world, int mask, int selection) {
    return world.hasBit(Board::HotDrink, mask + selection / 8, 1U << (selection % 8));
}

std::uint32_t minuteOfDay(const World& world, int minuteParameter, int hourParameter) {
    return world.get(Board::Master, hourParameter) * 60 + world.get(Board::Master, minuteParameter);
}

bool inDiscountBand(const World& world) {
    const std::uint32_t now = minuteOfDay(world, master::minute, master::hour);
    for (const int band : {master::discountBand, master::secondDiscountBand}) {
        const int end = band + master::discountBandEnd;
        if (now >= minuteOfDay(world, band, band + 1) && now < minuteOfDay(world, end, end + 1)) return true;
    }
    return false;
}

}  // namespace

Sales::Sales(World& world) : world_(world), random_(world.seed, Stream::Sales) {
    if (world_.moving) waitForCustomer();
}

void Sales::waitForCustomer() {
    world_.agenda.after(random_.between(20 * second, 60 * second), [this] {
        const auto product = choose();
        if (product && canSell()) sell(*product);
        waitForCustomer();
    });
}

bool Sales::canSell() const {
    return !world_.hasBit(Board::Master, master::state, busyBit) &&
           !world_.hasBit(Board::HotDrink, hot_drink::testState, inTestBit) &&
           !world_.hasBit(Board::Sector, sector::testState, inTestBit | zeroingBit);
}

std::optional<Sales::Product> Sales::choose() {
    std::vector<Product> offered;
    if (world_.isFitted(Board::HotDrink)) {
        for (int k = 0; k < selectionCount; ++k) {
            if (world_.get(Board::HotDrink, hot_drink::recipe + k) != 0) offered.push_back({Board::HotDrink, k});
        }
    }
    if (world_.isFitted(Board::Sector)) {
        for (int s = 0; s < sectorCount; ++s) {
            const auto price = world_.get(Board::Sector, sector::priceNumber + s);
            if (world_.get(Board::Master, master::price + static_cast<int>(price % 30)) != 0) {
                offered.push_back({Board::Sector, s});
            }
        }
    }
    if (offered.empty()) return std::nullopt;
    return offered[static_cast<std::size_t>(random_.between(0, static_cast<std::int64_t>(offered.size()) - 1))];
}

void Sales::sell(Product product) {
    const bool drink = product.board == Board::HotDrink;
    countExtras(product);
    if (isFree(product)) {
        world_.add(Board::Master, master::freeVends, 1);
        world_.add(product.board, (drink ? hot_drink::freeVends : sector::freeVends) + product.index, 1);
        return;
    }
    std::uint32_t discount = 0;
    const std::uint32_t amount = priceOf(product, discount);
    for (const int counter : {master::lifetimeVends, master::vends}) world_.add(Board::Master, counter, 1);
    for (const int total : {master::lifetimeIncome, master::income}) world_.add(Board::Master, total, amount);
    world_.add(Board::Master, master::discounts, discount);
    world_.add(product.board, (drink ? hot_drink::vends : sector::vends) + product.index, 1);
    collect(amount);
}

// The price less the discount, which is given back as well.
std::uint32_t Sales::priceOf(Product product, std::uint32_t& discount) const {
    const int first = product.board == Board::HotDrink ? hot_drink::priceNumber : sector::priceNumber;
    const bool allAtPriceOne = world_.hasBit(Board::Master, master::options, allAtPriceOneBit);
    const std::uint32_t number = allAtPriceOne ? 0 : world_.get(product.board, first + product.index) % 30;
    const std::uint32_t price = world_.get(Board::Master, master::price + static_cast<int>(number));
    discount = 0;
    if (inDiscountBand(world_)) {
        discount = std::min(price, world_.get(Board::Master, master::discount + static_cast<int>(number)));
    }
    return price - discount;
}

bool Sales::isFree(Product product) const {
    return product.board == Board::HotDrink && maskBit(world_, hot_drink::freeMask, product.index);
}

// Jugs and preselections are counted beside the vend itself.
void Sales::countExtras(Product product) {
    if (product.board != Board::HotDrink) return;
    if (maskBit(world_, hot_drink::jugMask, product.index) && random_.chance(0.1)) {
        world_.add(Board::Master, master::jugVends, 1);
        world_.add(Board::HotDrink, hot_drink::jugVends + product.index, 1);
    }
    if (random_.chance(0.2)) {
        const int preselection = static_cast<int>(random_.between(0, 3));
        world_.add(Board::Master, master::preselectionVends + preselection, 1);
        if (preselection == 0) world_.add(Board::Master, master::preselectedVends, 1);
    }
}

void Sales::collect(std::uint32_t amount) {
    const bool mdb = world_.hasBit(Board::Master, master::paymentSystem, mdbBit);
    if (!mdb && !world_.hasBit(Board::Master, master::paymentSystem, coinMechanismBit)) return;
    if (mdb && random_.chance(0.25)) {
        world_.add(Board::Master, master::fromKey, amount);
        return;
    }
    const std::uint32_t inserted = insertCoins(amount);
    const std::uint32_t excess = inserted - amount;
    if (mdb) {
        world_.add(Board::Master, master::intoTubes, inserted);
        world_.add(Board::Master, master::outOfTubes, excess);
    } else {
        world_.add(Board::Master, master::overpay, excess);
    }
}

// From the largest coin down, and one more of the smallest when the amount cannot be met exactly.
std::uint32_t Sales::insertCoins(std::uint32_t amount) {
    std::vector<std::pair<std::uint32_t, int>> coins;
    for (int c = 0; c < coinCount; ++c) {
        const std::uint32_t value = world_.get(Board::Master, master::coinValue + c);
        if (value != 0) coins.emplace_back(value, c);
    }
    if (coins.empty()) return amount;
    // Of two coins of one value the first is used.
    std::stable_sort(coins.begin(), coins.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    std::uint32_t inserted = 0;
    for (const auto& [value, coin] : coins) {
        const std::uint32_t pieces = (amount - inserted) / value;
        world_.add(Board::Master, master::coinCounter + coin, pieces);
        inserted += pieces * value;
    }
    if (inserted < amount) {
        world_.add(Board::Master, master::coinCounter + coins.back().second, 1);
        inserted += coins.back().first;
    }
    return inserted;
}

}  // namespace kestrel::simulator

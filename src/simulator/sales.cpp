// Customers and what they pay.
// Prices, discounts, coins and bands are the machine's own settings, so changing one changes the next sale.
#include "simulator/sales.h"

#include <algorithm>
#include <array>

namespace kestrel::simulator {
namespace {

// Of the amounts of the payment system's audit.
constexpr Setting intoTubes = master::MdbAuditAmount[0];
constexpr Setting outOfTubes = master::MdbAuditAmount[2];
constexpr Setting fromKey = master::MdbAuditAmount[5];

// The bit of a selection in a group of four mask bytes.
bool maskBit(const World& world, const SettingRange& mask, int selection) {
    return world.hasBit(mask[selection / 8], 1U << (selection % 8));
}

struct Moment {
    Setting hour;
    Setting minute;
};
struct Band {
    Moment start;
    Moment end;
};
constexpr std::array<Band, 2> discountBands{{
    {{master::BandDiscount1StartHour, master::BandDiscount1StartMinute},
     {master::BandDiscount1EndHour, master::BandDiscount1EndMinute}},
    {{master::BandDiscount2StartHour, master::BandDiscount2StartMinute},
     {master::BandDiscount2EndHour, master::BandDiscount2EndMinute}},
}};

std::uint32_t minuteOfDay(const World& world, const Moment& moment) {
    return world.get(moment.hour) * 60 + world.get(moment.minute);
}

bool inDiscountBand(const World& world) {
    const std::uint32_t now = minuteOfDay(world, {master::ClockHour, master::ClockMinute});
    return std::ranges::any_of(discountBands, [&](const Band& band) {
        return now >= minuteOfDay(world, band.start) && now < minuteOfDay(world, band.end);
    });
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
    return !world_.hasBit(master::MachineState, busyBit) && !world_.hasBit(hot_drink::TestState, inTestBit) &&
           !world_.hasBit(sector::TestState, inTestBit | zeroingBit);
}

std::optional<Sales::Product> Sales::choose() {
    std::vector<Product> offered;
    if (world_.isFitted(Board::HotDrink)) {
        for (int k = 0; k < selectionCount; ++k) {
            if (world_.get(hot_drink::Step1Valve[k]) != 0) offered.push_back({Board::HotDrink, k});
        }
    }
    if (world_.isFitted(Board::Sector)) {
        for (int s = 0; s < sectorCount; ++s) {
            if (world_.get(master::Price[world_.priceIndex(sector::SectorPrice[s])]) != 0) {
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
        world_.add(master::TotalFree, 1);
        world_.add((drink ? hot_drink::SelectionFree : sector::SectorFree)[product.index], 1);
        return;
    }
    std::uint32_t discount = 0;
    const std::uint32_t amount = priceOf(product, discount);
    for (const Setting& counter : {master::LifetimeVends, master::TotalVends}) world_.add(counter, 1);
    for (const Setting& total : {master::LifetimeTakings, master::TotalTakings}) world_.add(total, amount);
    world_.add(master::TotalDiscounts, discount);
    world_.add((drink ? hot_drink::SelectionVends : sector::SectorVends)[product.index], 1);
    collect(amount);
}

// The price less the discount, which is given back as well.
std::uint32_t Sales::priceOf(Product product, std::uint32_t& discount) const {
    const SettingRange& numbers = product.board == Board::HotDrink ? hot_drink::SelectionPrice : sector::SectorPrice;
    const bool allAtPriceOne = world_.hasBit(master::SaleOptions, allAtPriceOneBit);
    const int number = allAtPriceOne ? 0 : world_.priceIndex(numbers[product.index]);
    const std::uint32_t price = world_.get(master::Price[number]);
    discount = 0;
    if (inDiscountBand(world_)) {
        discount = std::min(price, world_.get(master::Discount[number]));
    }
    return price - discount;
}

bool Sales::isFree(Product product) const {
    return product.board == Board::HotDrink && maskBit(world_, hot_drink::MaskFree, product.index);
}

// Jugs and preselections are counted beside the vend itself.
void Sales::countExtras(Product product) {
    if (product.board != Board::HotDrink) return;
    if (maskBit(world_, hot_drink::MaskJug, product.index) && random_.chance(0.1)) {
        world_.add(master::TotalJugs, 1);
        world_.add(hot_drink::SelectionJugs[product.index], 1);
    }
    if (random_.chance(0.2)) {
        const int preselection = static_cast<int>(random_.between(0, 3));
        world_.add(master::PreselectionVends[preselection], 1);
        if (preselection == 0) world_.add(master::TotalPreselection1, 1);
    }
}

void Sales::collect(std::uint32_t amount) {
    const bool mdb = world_.hasBit(master::PaymentOptions, mdbBit);
    if (!mdb && !world_.hasBit(master::PaymentOptions, coinMechanismBit)) return;
    if (mdb && random_.chance(0.25)) {
        world_.add(fromKey, amount);
        return;
    }
    const std::uint32_t inserted = insertCoins(amount);
    const std::uint32_t excess = inserted - amount;
    if (mdb) {
        world_.add(intoTubes, inserted);
        world_.add(outOfTubes, excess);
    } else {
        world_.add(master::TotalOverpay, excess);
    }
}

// From the largest coin down, and one more of the smallest when the amount cannot be met exactly.
std::uint32_t Sales::insertCoins(std::uint32_t amount) {
    std::vector<std::pair<std::uint32_t, int>> coins;
    for (int c = 0; c < master::CoinValue.size(); ++c) {
        const std::uint32_t value = world_.get(master::CoinValue[c]);
        if (value != 0) coins.emplace_back(value, c);
    }
    if (coins.empty()) return amount;
    // Of two coins of one value the first is used.
    std::stable_sort(coins.begin(), coins.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    std::uint32_t inserted = 0;
    for (const auto& [value, coin] : coins) {
        const std::uint32_t pieces = (amount - inserted) / value;
        world_.add(master::CoinCount[coin], pieces);
        inserted += pieces * value;
    }
    if (inserted < amount) {
        world_.add(master::CoinCount[coins.back().second], 1);
        inserted += coins.back().first;
    }
    return inserted;
}

}  // namespace kestrel::simulator

// Unique products.
#include "pages/beverage/frm_pro_uni.h"

#include "language/language_files.h"
#include "link/identification.h"
#include "link/presence.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/position_labels.h"

namespace kestrel {

namespace {

constexpr unsigned DelaysBit = 16;  ///< of the machine's options

// One setting of each product.
constexpr SettingRange Channel = hot_drink::UniqueChannel;
constexpr std::array<SettingRange, 2> Times = {hot_drink::UniqueTime, hot_drink::UniqueDelay};

/// Read are also the revision, and brewing options whose values the page takes nothing from.
constexpr std::array<ParamRun, 6> SubscribedFirst = {{
    hot_drink::MachinePowders,
    hot_drink::BrewingOptions,
    hot_drink::MachineOptions,
    hot_drink::FirmwareRevision,
    CopyOf(hot_drink::BrewingOptions),
    CopyOf(hot_drink::MachineOptions),
}};

/// Not the list of the subscriptions: the revision is given back on another board, so that its own goes on being read
/// for it.
constexpr std::array<ParamRun, 3> ReleasedFirst = {{
    hot_drink::MachinePowders,
    hot_drink::BrewingOptions,
    hot_drink::MachineOptions,
}};
constexpr std::array<ParamRun, 4> ReleasedLast = {{
    CopyOf(hot_drink::BrewingOptions),
    CopyOf(hot_drink::MachineOptions),
    Setting{Board::Master, hot_drink::FirmwareRevision.number},
    master::HotDrinkPresence,
}};

/// One less than the values that come: number of products, options and nine settings.
constexpr int ExpectedArrivals = 10;

constexpr unsigned DelaysAlways = 32;  ///< of the machine's options
constexpr int FirstRevisionWithoutDelays = 27;
constexpr int DelayRow = 1;

constexpr int DesignProducts = 5;  ///< of the switches until the machine has told how many it has
constexpr int LargeStep = 10;
constexpr int TitleLine = 48;
constexpr int ProductLine = 73;
constexpr int FirstTimeLine = 74;
constexpr int UniqueLine = 76;
constexpr int UnitLine = 77;
constexpr int EnableDelayLine = 78;
constexpr int OnLine = 79;
constexpr int OffLine = 80;

void eachSetting(void (*subscribe)(const ParamRun&)) {
    for (int i = 0; i < FrmProUni::Products; ++i) {
        subscribe(Channel[i]);
        for (const SettingRange& times : Times) subscribe(times[i]);
    }
}

}  // namespace

FrmProUni::FrmProUni() : TablePage("FrmProUni", TitleLine, {}), Arrivals(ExpectedArrivals) {
    for (int i = 0; i < Products; ++i) {
        Product& product = at(i);
        for (ScrollBar& bar : product.bars) {
            bar.design(0, 255, LargeStep);
            bar.scale.decimals = 1;
            bar.scale.unit = "s";
        }
        product.channel.PositionLabels = NumberedPositions("0", DesignProducts);
        for (Label& label : product.values) label.showsValue("25.5");
        product.bars.OnChange([this, i](int Index) { HScroll_Change(i, Index); });
        product.channel.OnPositionChangeUser([this, i] { iSwSliderX_PositionChangeUser(i); });
    }
    swslResto.OnPositionChange([this] { swslResto_PositionChange(); });
}

Layout FrmProUni::Arrange() {
    Layout blocks(Layout::Kind::Column, {});
    for (int i = 0; i < Products; ++i) {
        Product& product = at(i);
        std::vector<Layout> cells = {product.name, product.channel, Gap()};
        for (int row = 0; row < product.bars.size(); ++row)
            cells.insert(cells.end(), {product.captions[row], product.bars[row], product.values[row]});
        blocks.children.push_back(Group(Blocks[i], Grid(3, std::move(cells))));
    }
    blocks.children.push_back(Group(Blocks[Products], Grid(3, {lblEnRit, swslResto, Gap()})));
    return blocks;
}

void FrmProUni::PageSubscribe() {
    WatchAll(SubscribedFirst);
    eachSetting(Watch);
    Watch(master::HotDrinkPresence);
    LockProducts();
}

void FrmProUni::PageRelease() {
    ReleaseAll(ReleasedFirst);
    eachSetting(Release);
    ReleaseAll(ReleasedLast);
}

void FrmProUni::PageCaptions() {
    TablePage::PageCaptions();
    for (int i = 0; i < Products; ++i) {
        Product& product = at(i);
        const std::string which = " " + LanguageTable(UniqueLine) + " " + std::to_string(i + 1) + " ";
        product.name.Caption = LanguageTable(ProductLine) + which;
        for (int row = 0; row < product.captions.size(); ++row)
            product.captions[row].Caption = LanguageTable(FirstTimeLine + row) + which + LanguageTable(UnitLine);
    }
    lblEnRit.Caption = LanguageTable(EnableDelayLine);
    swslResto.PositionLabels = TwoPositions(OffLine, OnLine);
}

void FrmProUni::HScroll_Change(int product, int Index) {
    if (Updating) return;
    const SettingRange& times = Times[static_cast<std::size_t>(Index)];
    WriteTwice(times[product], static_cast<unsigned>(at(product).bars[Index].Value.get()));
}

/// Writes while a value is being shown as well: a product that the machine no longer has is taken off the board.
void FrmProUni::iSwSliderX_PositionChangeUser(int product) {
    const SliderSwitch& channel = at(product).channel;
    WriteTwice(Channel[product], static_cast<unsigned>(channel.Position.get()));
    LockProducts();
}

/// Writes whenever the switch moves, also when it follows the board. It builds on what the board last reported, not
/// on what was last written.
void FrmProUni::swslResto_PositionChange() {
    const unsigned options = swslResto.Position == 1 ? OptionByte | DelaysBit : OptionByte & ~DelaysBit;
    WriteTwice(hot_drink::MachineOptions, options);
}

void FrmProUni::enableHead(Product& product, bool live) {
    product.name.Enabled = live;
    product.channel.Enabled = live;
}

void FrmProUni::enableRow(Product& product, int row, bool live) {
    product.captions[row].Enabled = live;
    product.values[row].Enabled = live;
    product.bars[row].Enabled = live;
}

void FrmProUni::LockProducts() {
    for (Product& product : products_) {
        enableHead(product, false);
        for (int row = 0; row < product.bars.size(); ++row) enableRow(product, row, false);
    }
    lblEnRit.Enabled = false;
    swslResto.Enabled = false;
}

void FrmProUni::UnlockProducts() {
    if (SaysPresent(LastStatus)) {
        const std::string channels = NumberedPositions("0", ProductCount);
        const bool delays = (OptionsBits & DelaysAlways) != 0 || BoardRevision() < FirstRevisionWithoutDelays;
        for (Product& product : products_) {
            enableHead(product, true);
            product.channel.PositionLabels = channels;
            if (product.channel.Position == 0) continue;
            for (int row = 0; row <= (delays ? DelayRow : 0); ++row) enableRow(product, row, true);
        }
    }
    lblEnRit.Enabled = true;
    swslResto.Enabled = true;
}

void FrmProUni::countOrUnlock() {
    if (Arrivals.Loading())
        Arrivals.count();
    else
        UnlockProducts();
}

void FrmProUni::statusArrived(ParamValue value) {
    if (value == LastStatus) return;
    LastStatus = value;
    if (SaysPresent(value))
        UnlockProducts();
    else
        LockProducts();
}

void FrmProUni::productCountArrived(ParamValue value) {
    ProductCount = value;
    for (int i = 0; i < Products; ++i) {
        SliderSwitch& channel = at(i).channel;
        if (channel.Position <= ProductCount) continue;
        channel.Position = static_cast<int>(ProductCount);
        iSwSliderX_PositionChangeUser(i);
    }
    countOrUnlock();
}

void FrmProUni::optionsArrived(ParamValue value) {
    OptionByte = static_cast<unsigned>(value);
    swslResto.Position = (OptionByte & DelaysBit) != 0 ? 1 : 0;
    if (Arrivals.Loading()) return Arrivals.count();
    for (Product& product : products_) enableRow(product, DelayRow, false);
    UnlockProducts();
}

void FrmProUni::settingArrived(int n, ParamValue value) {
    if (Arrived(n, hot_drink::MachinePowders)) return productCountArrived(value);
    if (Arrived(n, hot_drink::MachineOptions)) return optionsArrived(value);
    for (int i = 0; i < Products; ++i) {
        Product& product = at(i);
        if (Arrived(n, Channel[i])) {
            product.channel.Position = static_cast<int>(value);
            countOrUnlock();
        }
        for (int row = 0; row < product.bars.size(); ++row) {
            if (!Arrived(n, Times[static_cast<std::size_t>(row)][i])) continue;
            SetBarTenths(product.values[row], product.bars[row], value);
            Arrivals.count();
        }
    }
}

void FrmProUni::valueCame(int n, ParamValue value) {
    if (Arrived(n, master::HotDrinkPresence)) statusArrived(value);
    settingArrived(n, value);
}

void FrmProUni::valueShown() {
    if (Arrivals.completes()) UnlockProducts();
}

}  // namespace kestrel

// What a file of settings means for the machine on the line.
#include "ctl/plan.h"

#include <algorithm>
#include <array>

#include "ctl/words.h"
#include "link/money.h"
#include "link/presence.h"
#include "link/settings.h"
#include "platform/errors.h"

namespace kestrel::ctl {

namespace {

using Kind = CatalogueRow::Kind;

// How many of a kind the machine has comes before what refers to one of them, and the payment system before the
// decimals that it may fix.
constexpr std::array First = {hot_drink::CoolingKind,      hot_drink::MachineValves,   hot_drink::MachineMixers,
                              hot_drink::MachinePowders,   hot_drink::MachineSugarBox, master::PaymentOptions,
                              master::MoneyDecimalsSetting};
constexpr std::array Needed = {master::MoneyDecimals, master::HotDrinkPresence, master::SectorPresence,
                               master::MachineNumber, master::MachineState,     master::PaymentOptions,
                               hot_drink::CoolingKind};
constexpr std::array ClockSettings = {master::ClockSetHour, master::ClockSetMinute, master::ClockSetDay,
                                      master::ClockSetMonth, master::ClockSetYear};
constexpr std::uint32_t FixesDecimals = 2 | 4;  ///< of the payment options: the systems that have decimals of their own
constexpr std::uint32_t HasClock = 4;           ///< of the machine's state
constexpr std::uint32_t NoCooling = 0, WithRefrigerator = 1;  ///< kinds of cooling unit
constexpr int FirstWithoutDelays = 27;                        ///< revision of the master

bool isOneOf(const Item& item, const SettingRange& range) {
    return item.board() == range.board() && range.indexOf(item.setting().number) >= 0;
}

class Planner {
  public:
    Planner(const SettingsFile& file, const std::string& fileName, const Options& options, const Connection& connection,
            const Values& present)
        : file_(file), fileName_(fileName), options_(options), connection_(connection), present_(present) {}

    Plan make() {
        std::vector<Entry> entries;
        for (const Entry& each : file_.entries)
            if (options_.groups.empty() || options_.groups.contains(std::string(each.item.row->group)))
                entries.push_back(each);
        std::ranges::stable_sort(entries, {}, rankOf);
        for (const Entry& each : entries) {
            if (isThereAlready(each)) continue;
            const std::string why = whyNot(each);
            if (why.empty())
                take(each);
            else
                plan_.leftOut.push_back({each.item, why});
        }
        return std::move(plan_);
    }

  private:
    static std::size_t rankOf(const Entry& entry) {
        return static_cast<std::size_t>(std::ranges::find(First, entry.item.setting()) - First.begin());
    }

    std::optional<std::uint32_t> has(const Place& place) const {
        const auto found = present_.find(place);
        return found == present_.end() ? std::nullopt : std::optional(found->second);
    }

    bool isThereAlready(const Entry& entry) const {
        const auto same = [&](const Place& place) {
            const auto value = has(place);
            return value && entry.raw && entry.item.areSame(*value, *entry.raw);
        };
        return same(entry.item.place()) && (!entry.item.hasCopy() || same(entry.item.copy()));
    }

    /// What the machine will have: what the file says, where that is written, or what it has now.
    std::uint32_t becomes(const Setting& setting) const {
        const auto step =
            std::ranges::find_if(plan_.steps, [&](const Step& each) { return each.item.setting() == setting; });
        return step != plan_.steps.end() ? step->wanted : has(PlaceOf(setting)).value_or(0);
    }

    bool isReady(Board board) const {
        if (!connection_.board(board).isUsable()) return false;
        if (board == Board::Master) return true;
        const Setting& word = board == Board::HotDrink ? master::HotDrinkPresence : master::SectorPresence;
        return SaysPresent(has(PlaceOf(word)).value_or(0));
    }

    std::string whyNot(const Entry& entry) const {
        const Item& item = entry.item;
        if (item.row->kind == Kind::Own && !options_.own) return say(Word::IsOwn);
        if (item.row->kind != Kind::Own && item.row->kind != Kind::Setting) return say(Word::IsNoSetting);
        if (!entry.raw) return say(Word::NotInTheFile);
        if (const std::string& trouble = connection_.board(item.board()).fileTrouble; !trouble.empty())
            return say(Word::IndexFileMissing, {trouble});
        if (!isReady(item.board())) return say(Word::BoardIsNotThere);
        if (!has(item.place()) || (item.hasCopy() && !has(item.copy()))) return say(Word::CouldNotBeRead);
        if (item.setting() == master::MoneyDecimalsSetting && (becomes(master::PaymentOptions) & FixesDecimals) != 0)
            return say(Word::SetByPayment);
        if (item.isMoney() && file_.decimals != decimals()) return say(Word::OtherDecimals);
        const std::uint32_t cooling = becomes(hot_drink::CoolingKind);
        const bool needsRefrigerator =
            isOneOf(item, hot_drink::ColdValvePairing) || isOneOf(item, hot_drink::RefrigeratorSetPoint);
        const bool isForeign = (needsRefrigerator && cooling != WithRefrigerator) ||
                               (isOneOf(item, hot_drink::MaskCold) && cooling == NoCooling) ||
                               (isOneOf(item, hot_drink::UniqueDelay) && BoardRevision() >= FirstWithoutDelays);
        return isForeign ? say(Word::NotOnThisMachine) : "";
    }

    /// Decimals that the machine will have.
    std::optional<std::uint32_t> decimals() const {
        const bool isPlanned = std::ranges::any_of(
            plan_.steps, [](const Step& each) { return each.item.setting() == master::MoneyDecimalsSetting; });
        if (isPlanned) return becomes(master::MoneyDecimalsSetting);
        const auto now = has(PlaceOf(master::MoneyDecimals));
        return now ? std::optional(static_cast<std::uint32_t>(DecimalsOf(*now))) : std::nullopt;
    }

    void take(const Entry& entry) {
        const Item& item = entry.item;
        const auto add = [&](const Place& place, bool isCopy) {
            const std::uint32_t before = *has(place);
            if (item.areSame(before, *entry.raw)) return;
            refuseWhatCannotBe(entry);
            plan_.steps.push_back({item, isCopy, before, item.blend(*entry.raw, *has(item.place())), before});
        };
        add(item.place(), false);
        if (item.hasCopy()) add(item.copy(), true);
    }

    void refuseWhatCannotBe(const Entry& entry) const {
        const CatalogueRow& row = *entry.item.row;
        const int width =
            ValueNibble(ParamTable(BankOf(row.settings.board()), entry.item.setting().number).Command) + 1;
        const std::uint64_t widest = (std::uint64_t{1} << 8 * std::min(width, WrittenBytes)) - 1;
        const auto highest = static_cast<std::uint32_t>(std::min<std::uint64_t>(row.highest, widest));
        if (*entry.raw >= row.lowest && *entry.raw <= highest) return;
        throw RunTimeError(error_number::Overflow,
                           fileName_ + ": " + say(Word::Line, {std::to_string(entry.line)}) + ": " +
                               say(Word::OutOfRange,
                                   {std::to_string(*entry.raw), std::to_string(row.lowest), std::to_string(highest)}));
    }

    const SettingsFile& file_;
    const std::string& fileName_;
    const Options& options_;
    const Connection& connection_;
    const Values& present_;
    Plan plan_;
};

}  // namespace

bool isWanted(const Options& options, const Item& item) {
    const Kind kind = item.row->kind;
    const bool isKind =
        kind == Kind::Setting || (kind == Kind::Own && options.own) || (kind == Kind::Counter && options.all);
    return isKind &&
           (options.groups.empty() || kind == Kind::Counter || options.groups.contains(std::string(item.row->group)));
}

std::vector<Place> placesFor(const std::vector<Entry>& entries) {
    std::vector<Place> places;
    places.reserve(std::size(Needed));
    for (const Setting& each : Needed) places.push_back(PlaceOf(each));
    for (const Entry& each : entries) {
        places.push_back(each.item.place());
        if (each.item.hasCopy()) places.push_back(each.item.copy());
    }
    return places;
}

void refuseOtherIdentity(const SettingsFile& file, const Connection& connection) {
    for (const auto& [board, index] : file.boards) {
        const BoardOnTheLine& here = connection.board(board);
        if (here.isThere && here.indexFile != index)
            throw RunTimeError(error_number::TypeMismatch,
                               say(Word::OtherIdentity, {BoardName(board), index, here.indexFile}));
    }
}

Plan makePlan(const SettingsFile& file, const std::string& fileName, const Options& options,
              const Connection& connection, const Values& present) {
    return Planner(file, fileName, options, connection, present).make();
}

std::vector<Place> clockPlaces() {
    std::vector<Place> places;
    places.reserve(std::size(ClockSettings));
    for (const Setting& each : ClockSettings) places.push_back(PlaceOf(each));
    return places;
}

std::vector<Step> clockSteps(const std::tm& time, const Values& present) {
    const std::array<int, ClockSettings.size()> parts = {time.tm_hour, time.tm_min, time.tm_mday, time.tm_mon + 1,
                                                         time.tm_year % 100};
    const auto state = present.find(PlaceOf(master::MachineState));
    if (state == present.end() || (state->second & HasClock) == 0) return {};
    std::vector<Step> steps;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto [row, index] = FindParameter(ClockSettings[i].board, ClockSettings[i].number);
        const auto before = present.find(PlaceOf(ClockSettings[i]));
        if (before == present.end()) continue;
        steps.push_back({{row, index}, false, before->second, static_cast<std::uint32_t>(parts[i]), {}});
    }
    return steps;
}

}  // namespace kestrel::ctl

// kestrelctl compare: what differs between a machine and a file, or two files, by group.
#include <algorithm>
#include <map>

#include "ctl/plan.h"
#include "ctl/words.h"
#include "link/money.h"
#include "link/settings.h"
#include "platform/errors.h"
#include "platform/platform.h"

namespace kestrel::ctl {

namespace {

constexpr Place Decimals = PlaceOf(master::MoneyDecimals);

/// One side of the comparison.
struct Side {
    std::string name;
    Values values;
    int decimals = 0;
    std::string separator = {};

    std::string figure(const Item& item, const Place& place) const {
        const auto found = values.find(place);
        return found == values.end() ? "-" : FigureWithUnit(item, found->second, decimals, separator);
    }
};

class Comparison {
  public:
    Comparison(Context& context, const Side& one, const Side& other) : context_(context), one_(one), other_(other) {}

    /// `copyOfOther`: the second side is a machine, whose copies count too.
    void take(const Item& item, bool copyOfOther) {
        compare(item, item.place(), item.name());
        if (copyOfOther && item.hasCopy()) compare(item, item.copy(), item.name() + ".copy");
    }

    int conclude() {
        if (different_ == 0 && unknown_.empty()) context_.out.heading(say(Word::NothingDiffers));
        if (!unknown_.empty())
            context_.out.remark(say(Word::NotCompared, {std::to_string(unknown_.size())}) + ": " +
                                listInShort(unknown_));
        return different_ > 0 ? status::Differs : unknown_.empty() ? status::Well : status::Trouble;
    }

  private:
    void compare(const Item& item, const Place& place, const std::string& name) {
        const auto here = one_.values.find(item.place());
        const auto there = other_.values.find(place);
        if (here == one_.values.end() || there == other_.values.end()) {
            unknown_.push_back(BoardName(item.board()) + ' ' + name);
            return;
        }
        const bool areOfOneScale = !item.isMoney() || one_.decimals == other_.decimals;
        if (item.areSame(here->second, there->second) && areOfOneScale) return;
        ++different_;
        if (const std::string group(item.row->group); group != group_) {
            group_ = group;
            context_.out.heading(groupName(group) + ':');
        }
        const std::string mine = one_.figure(item, item.place());
        const std::string theirs = other_.figure(item, place);
        context_.out.result("  " + BoardName(item.board()) + ' ' + name + ": " +
                                say(Word::HereAndThere, {mine, one_.name, theirs, other_.name}),
                            {{"group", group_},
                             {"board", BoardName(item.board())},
                             {"name", name},
                             {"first", mine},
                             {"second", theirs},
                             {"first_raw", std::int64_t{here->second}},
                             {"second_raw", std::int64_t{there->second}}});
    }

    Context& context_;
    const Side& one_;
    const Side& other_;
    std::string group_;
    long different_ = 0;
    std::vector<std::string> unknown_;  ///< on one side
};

SettingsFile load(const Context& context, const std::string& name) {
    return parse(platform().readFile(name), name, context.options.edited);
}

Side sideOf(const Context& context, const SettingsFile& file, const std::string& name) {
    const std::string separator = context.out.isJson() ? "." : platform().decimalSeparator();
    Side side{name, {}, static_cast<int>(file.decimals.value_or(0)), separator};
    for (const Entry& each : file.entries)
        if (each.raw) side.values[each.item.place()] = *each.raw;
    return side;
}

/// By group, each with its parameters in the order of the first file.
std::vector<Entry> wantedEntries(const Context& context, const SettingsFile& file) {
    std::vector<Entry> entries;
    std::ranges::copy_if(file.entries, std::back_inserter(entries),
                         [&](const Entry& each) { return isWanted(context.options, each.item); });
    std::ranges::stable_sort(entries, {}, [](const Entry& each) { return each.item.row->group; });
    return entries;
}

int compareWithMachine(Context& context, const SettingsFile& file, const Side& side) {
    Connection connection(context);
    connection.begin();
    refuseOtherIdentity(file, connection);
    const std::vector<Entry> entries = wantedEntries(context, file);
    LineWork& work = connection.work();
    work.label = say(Word::Reading);
    Side machine{say(Word::Machine), {}, 0, side.separator};
    if (work.read(placesFor(entries), machine.values) == Ending::OtherBoards)
        throw RunTimeError(error_number::DeviceUnavailable, say(Word::OtherMachine));
    if (const auto found = machine.values.find(Decimals); found != machine.values.end())
        machine.decimals = DecimalsOf(found->second);
    Comparison comparison(context, side, machine);
    for (const Entry& each : entries) comparison.take(each.item, true);
    return comparison.conclude();
}

}  // namespace

int compare(Context& context) {
    const std::string& name = context.options.arguments.front();
    const SettingsFile file = load(context, name);
    const Side side = sideOf(context, file, name);
    if (context.options.arguments.size() == 1) return compareWithMachine(context, file, side);
    const std::string& otherName = context.options.arguments.back();
    const SettingsFile otherFile = load(context, otherName);
    const Side other = sideOf(context, otherFile, otherName);
    SettingsFile both = file;
    for (const Entry& each : otherFile.entries)
        if (!side.values.contains(each.item.place())) both.entries.push_back(each);
    Comparison comparison(context, side, other);
    for (const Entry& each : wantedEntries(context, both)) comparison.take(each.item, false);
    return comparison.conclude();
}

}  // namespace kestrel::ctl

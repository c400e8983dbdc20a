// kestrelctl watch and monitor: what goes on as long as it is watched.
#include <array>
#include <map>

#include "ctl/connection.h"
#include "ctl/line_work.h"
#include "ctl/monitor.h"
#include "ctl/words.h"
#include "link/money.h"
#include "link/settings.h"
#include "platform/errors.h"
#include "platform/platform.h"

namespace kestrel::ctl {

namespace {

constexpr Place Decimals = PlaceOf(master::MoneyDecimals);

std::vector<Item> itemsOf(const std::vector<std::string>& names) {
    std::vector<Item> items;
    for (const std::string& name : names) {
        const std::vector<Item> found = ItemsNamed(name);
        if (found.empty()) throw RunTimeError(error_number::NoSuchElement, say(Word::NoSuchParameter, {name}));
        items.insert(items.end(), found.begin(), found.end());
    }
    return items;
}

std::string timeOf(const std::tm& time) {
    std::array<char, 16> text;
    return std::string(text.data(), std::strftime(text.data(), text.size(), "%H:%M:%S", &time));
}

/// The end by the user's word or the time is the way in which watching ends.
int statusOf(const Context& context, Ending how) {
    if (how == Ending::Whole || how == Ending::Stopped) return status::Well;
    context.out.remark(say(how == Ending::OtherBoards ? Word::OtherMachine : Word::LineIsSilent));
    return status::Trouble;
}

}  // namespace

int watch(Context& context) {
    const std::vector<Item> items = itemsOf(context.options.arguments);
    Connection connection(context);
    connection.begin();
    std::map<Place, Item> byPlace;
    std::vector<Place> places;
    bool isMoney = false;
    for (const Item& item : items) {
        places.push_back(item.place());
        byPlace.emplace(item.place(), item);
        isMoney = isMoney || item.isMoney();
        if (!connection.board(item.board()).isUsable())
            context.out.remark(BoardName(item.board()) + ": " + say(Word::BoardIsNotThere));
    }
    LineWork& work = connection.work();
    Values values;
    if (isMoney) work.read({Decimals}, values);
    const int decimals = DecimalsOf(isMoney ? values[Decimals] : 0);
    Values last;
    return statusOf(context, work.follow(places, context.options.seconds, [&](const Place& place, std::uint32_t raw) {
        const auto [known, isNew] = last.emplace(place, raw);
        if (!isNew && std::exchange(known->second, raw) == raw) return;
        const Item& item = byPlace.at(place);
        const std::string time = timeOf(context.now());
        context.out.result(time + ' ' + BoardName(item.board()) + ' ' + item.name() + ' ' +
                               FigureWithUnit(item, raw, decimals, platform().decimalSeparator()),
                           {{"time", time},
                            {"board", BoardName(item.board())},
                            {"name", item.name()},
                            {"value", Figure(item, raw, decimals)},
                            {"unit", std::string(item.row->unit)},
                            {"raw", std::int64_t{raw}}});
    }));
}

int monitor(Context& context) {
    std::vector<Place> places;
    const auto items = context.options.arguments.empty() ? AllItems() : itemsOf(context.options.arguments);
    places.reserve(items.size());
    for (const Item& item : items) places.push_back(item.place());
    Traffic traffic(context);
    Connection connection(context);
    connection.begin();
    LineWork& work = connection.work();
    work.seesAll = &traffic;
    work.neverRests();
    const Ending how = work.follow(places, context.options.seconds, [](const Place&, std::uint32_t) {});
    traffic.conclude();
    return statusOf(context, how);
}

}  // namespace kestrel::ctl

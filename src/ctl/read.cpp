// kestrelctl read: the machine's settings into a file.
#include <array>
#include <cstdio>

#include "ctl/plan.h"
#include "ctl/words.h"
#include "link/money.h"
#include "link/settings.h"
#include "platform/errors.h"
#include "platform/platform.h"
#include "program_version.h"

namespace kestrel::ctl {

namespace {

constexpr Place MachineNumber = PlaceOf(master::MachineNumber);
constexpr Place Decimals = PlaceOf(master::MoneyDecimals);

std::string dateOf(const std::tm& time) {
    std::array<char, 32> text;
    return std::string(text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &time));
}

std::optional<std::uint32_t> found(const Values& values, const Place& place) {
    const auto at = values.find(place);
    return at == values.end() ? std::nullopt : std::optional(at->second);
}

/// Head and lines of what is wanted and has been read.
SettingsFile fileOf(const Context& context, const Connection& connection, const std::vector<Item>& items,
                    const Values& values) {
    SettingsFile file;
    file.program = "kestrelctl ";
    file.program += ProgramVersion;
    file.date = dateOf(context.now());
    file.machine = found(values, MachineNumber);
    if (const auto word = found(values, Decimals)) file.decimals = static_cast<std::uint32_t>(DecimalsOf(*word));
    for (const Board which : {Board::Master, Board::HotDrink, Board::Sector})
        if (connection.board(which).isUsable()) file.boards[which] = connection.board(which).indexFile;
    for (const Item& item : items) file.entries.push_back({item, found(values, item.place())});
    return file;
}

}  // namespace

int read(Context& context) {
    Connection connection(context);
    connection.begin();
    Options wanted = context.options;
    wanted.own = true;
    std::vector<Item> items;
    std::vector<Place> places{Decimals, MachineNumber};
    for (const Item& item : AllItems()) {
        if (!isWanted(wanted, item) || !connection.board(item.board()).isUsable()) continue;
        items.push_back(item);
        places.push_back(item.place());
        if (item.hasCopy()) places.push_back(item.copy());
    }
    LineWork& work = connection.work();
    work.label = say(Word::Reading);
    Values values;
    Ending how = work.read(places, values);
    if (how == Ending::Whole && work.wasInterrupted()) {
        Values again;
        how = work.read({MachineNumber}, again);
        if (found(again, MachineNumber) != found(values, MachineNumber)) how = Ending::OtherBoards;
    }
    if (how == Ending::OtherBoards) throw RunTimeError(error_number::DeviceUnavailable, say(Word::OtherMachine));

    SettingsFile file = fileOf(context, connection, items, values);
    std::size_t unread = 0;
    for (const Entry& each : file.entries) {
        const std::string name = BoardName(each.item.board()) + ' ' + each.item.name();
        if (!each.raw) {
            ++unread;
            context.out.remark(name + ": " + say(Word::CouldNotBeRead));
        } else if (const auto copy = each.item.hasCopy() ? found(values, each.item.copy()) : each.raw;
                   copy != each.raw) {
            const std::string has = copy ? std::to_string(*copy) : "-";
            context.out.remark(name + ": " + say(Word::CopyDiffers, {std::to_string(*each.raw), has}));
        }
    }
    file.isComplete = unread == 0 && connection.lack().empty();
    platform().writeFile(context.options.arguments.front(), print(file));
    if (const std::string lack = connection.lack(); !lack.empty()) context.out.remark(lack);
    const auto count = [](std::size_t number) { return static_cast<std::int64_t>(number); };
    context.out.result(say(file.isComplete ? Word::ReadWhole : Word::ReadInPart,
                           {std::to_string(file.entries.size() - unread), std::to_string(file.entries.size()),
                            context.options.arguments.front()}),
                       {{"file", context.options.arguments.front()},
                        {"read", count(file.entries.size() - unread)},
                        {"unread", count(unread)},
                        {"complete", file.isComplete}});
    return file.isComplete ? status::Well : status::Differs;
}

}  // namespace kestrel::ctl

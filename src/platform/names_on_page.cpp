// What the controls of a page are called.
#include "platform/names_on_page.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

#include "platform/basic_controls.h"
#include "platform/displays.h"

namespace kestrel {

namespace {

using Teller = std::string (*)(const Control&);

std::string titleRound(const Control& control, int distance) {
    const Frame* frame = control.frame();
    for (; frame && distance > 0; --distance) frame = frame->frame();
    return frame ? frame->Caption.get() : std::string();
}

/// What tells controls of one name apart, what is nearest first.
constexpr std::array<Teller, 4> Tellers = {
    [](const Control& control) { return control.rowName(); },
    [](const Control& control) { return control.columnName(); },
    [](const Control& control) { return titleRound(control, 0); },
    [](const Control& control) { return titleRound(control, 1); },
};

bool isNamed(const Control& control) {
    if (dynamic_cast<const Frame*>(&control)) return false;
    const auto* label = dynamic_cast<const Label*>(&control);
    if (!label || label->isClickable()) return true;
    return label->role == Label::Role::Value && !label->standsForNoValue;
}

/// A figure goes by the name of its bar.
const Control& namedFor(const Control& control) {
    const auto* label = dynamic_cast<const Label*>(&control);
    return label && label->bar() ? *label->bar() : control;
}

using Groups = std::map<std::string, std::vector<NamedControl*>>;

Groups groupsOf(std::vector<NamedControl>& all) {
    Groups groups;
    for (NamedControl& each : all) groups[each.name].push_back(&each);
    std::erase_if(groups, [](const auto& group) { return group.second.size() < 2; });
    return groups;
}

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

/// A number alone, or nothing, says nothing by itself.
bool isBare(const std::string& name) { return name.find_first_not_of("0123456789 ") == std::string::npos; }

void putBefore(NamedControl& named, const std::string& told) {
    if (told.empty() || told == named.name) return;
    named.name = named.name.empty() ? told : told + ", " + named.name;
}

void tellApart(std::vector<NamedControl>& all, Teller teller) {
    for (auto& [name, group] : groupsOf(all)) {
        const std::string first = teller(*group.front()->control);
        const auto isAlike = [&](const NamedControl* each) { return teller(*each->control) == first; };
        if (std::all_of(group.begin(), group.end(), isAlike)) continue;
        for (NamedControl* each : group) putBefore(*each, trimmed(teller(*each->control)));
    }
}

/// The first of those that are still alike keeps its name; those that have none get that of the page, and they choose
/// last, with clocks and the bars that show how a page is filled.
void number(std::vector<NamedControl>& all, const std::string& pageName) {
    std::set<std::string> taken;
    for (const bool last : {false, true})
        for (NamedControl& each : all) {
            const bool choosesLast = each.name.empty() || dynamic_cast<const ProgressBar*>(each.control) ||
                                     dynamic_cast<const ClockDisplay*>(each.control);
            if (choosesLast != last) continue;
            const std::string name = each.name.empty() ? pageName : each.name;
            int count = 1;
            for (each.name = name; !taken.insert(each.name).second;)
                each.name = name + " (" + std::to_string(++count) + ")";
        }
}

}  // namespace

std::vector<NamedControl> NamedControls(Window& page) {
    std::vector<NamedControl> all;
    eachControl(page.Arrange(), [&all](Control& control) {
        if (isNamed(control) && &namedFor(control) == &control)
            all.push_back({&control, trimmed(control.accessibleName())});
    });
    for (NamedControl& each : all)
        for (const Teller teller : Tellers)
            if (isBare(each.name)) putBefore(each, trimmed(teller(*each.control)));
    for (const Teller teller : Tellers) tellApart(all, teller);
    number(all, page.Caption);
    return all;
}

std::string NameOnPage(Window& page, const Control& control) {
    for (const NamedControl& each : NamedControls(page))
        if (each.control == &namedFor(control)) return each.name;
    return {};
}

}  // namespace kestrel

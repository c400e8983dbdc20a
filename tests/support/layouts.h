// What stands on a page, found in the tree by which the page says where its controls stand.
// In reading order: a technician finds a control by its place and the words round it.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/layout.h"
#include "platform/switches.h"

namespace kestrel::testing {

/// Calls with each control of the tree; a frame comes before what stands in it.
template <class Visit>
void eachControl(const Layout& layout, Visit&& visit) {
    if (layout.control) visit(*layout.control);
    for (const Layout& child : layout.children) eachControl(child, visit);
}

/// Which lamps or lit switches of an array are on.
template <class Lamps>
std::vector<int> lit(const Lamps& lamps) {
    std::vector<int> found;
    for (int i = 0; i < lamps.size(); ++i)
        if (lamps[i].Active) found.push_back(i);
    return found;
}

/// Every bar with the figure that stands right behind it.
inline std::vector<std::pair<ScrollBar*, Label*>> barsOf(const Layout& layout) {
    std::vector<std::pair<ScrollBar*, Label*>> pairs;
    ScrollBar* before = nullptr;
    eachControl(layout, [&](Control& control) {
        auto* label = dynamic_cast<Label*>(&control);
        if (before && label && label->role == Label::Role::Value) pairs.emplace_back(before, label);
        before = dynamic_cast<ScrollBar*>(&control);
    });
    return pairs;
}

/// Controls that a user could work now.
inline int usableInputs(const Layout& layout) {
    int count = 0;
    eachControl(layout, [&](Control& control) {
        const auto* label = dynamic_cast<const Label*>(&control);
        const bool input = (label && label->isClickable()) || dynamic_cast<ScrollBar*>(&control) ||
                           dynamic_cast<SteppedSwitch*>(&control) || dynamic_cast<ToggleSwitch*>(&control) ||
                           dynamic_cast<CommandButton*>(&control) || dynamic_cast<TextBox*>(&control);
        if (input && control.usable()) ++count;
    });
    return count;
}

/// What a technician reads on the page beside the values: captions, keys, positions of switches, names of lamps.
inline std::vector<std::string> textsOf(const Layout& layout) {
    std::vector<std::string> texts;
    eachControl(layout, [&](Control& control) {
        const auto* label = dynamic_cast<const Label*>(&control);
        if (const auto* stepped = dynamic_cast<const SteppedSwitch*>(&control))
            texts.push_back(stepped->PositionLabels);
        else if (!control.accessibleName().empty() && (!label || label->role != Label::Role::Value))
            texts.push_back(label ? label->Caption.get() : control.accessibleName());
    });
    return texts;
}

/// A raw amount with the decimal point put between its digits.
inline std::string written(std::uint32_t raw, std::size_t decimals) {
    std::string digits = std::to_string(raw);
    while (digits.size() <= decimals) digits.insert(0, "0");
    if (decimals > 0) digits.insert(digits.size() - decimals, ".");
    return digits;
}

}  // namespace kestrel::testing

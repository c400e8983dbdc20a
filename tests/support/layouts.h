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

/// Every bar with its figure, which stands right behind it, or else right before it.
inline std::vector<std::pair<ScrollBar*, Label*>> barsOf(const Layout& layout) {
    std::vector<Control*> controls;
    eachControl(layout, [&](Control& control) { controls.push_back(&control); });
    std::vector<std::pair<ScrollBar*, Label*>> pairs;
    for (std::size_t i = 1; i + 1 < controls.size(); ++i)
        for (Control* beside : {controls[i + 1], controls[i - 1]}) {
            auto* bar = dynamic_cast<ScrollBar*>(controls[i]);
            auto* label = dynamic_cast<Label*>(beside);
            const bool standsOverOthers = bar && bar->scale.parse;
            if (!bar || standsOverOthers || !label || label->role != Label::Role::Value) continue;
            pairs.emplace_back(bar, label);
            break;
        }
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

/// What is not greyed on the page, whether a user can work it or not.
inline int liveControls(const Layout& layout) {
    int count = 0;
    eachControl(layout, [&](const Control& control) { count += control.Enabled ? 1 : 0; });
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

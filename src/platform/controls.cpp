// The plain kinds of control.
// See controls.h.
#include "platform/controls.h"

#include <algorithm>

#include "platform/numbers.h"

namespace kestrel {

std::string Label::accessibleName() const { return caption() ? caption()->Caption.get() : Caption.get(); }

void Label::UserClick() {
    if (usable()) raise(onClick_);
}

void ScrollBar::design(int lowest, int highest, int largeStep) {
    Min = lowest;
    Max = highest;
    LargeChange = largeStep;
    Value = Value.get();  // inside the new limits
}

std::string ScrollBar::textOf(int value) const {
    return formatScaled(static_cast<std::int64_t>(value) + scale.offset, scale.decimals);
}

std::optional<int> ScrollBar::valueOf(const std::string& typed) const {
    const std::optional<std::int64_t> raw = parseScaled(typed, scale.decimals);
    if (!raw) return std::nullopt;
    const std::int64_t value = *raw - scale.offset;
    if (value < Min || value > Max) return std::nullopt;
    return static_cast<int>(value);
}

void ScrollBar::UserMove(int value) {
    if (!usable()) return;
    const int bounded = std::max(Min.get(), std::min(value, Max.get()));
    if (bounded == Value) return;
    userChange([&] { Value = bounded; });
}

void ScrollBar::putBack(int value) {
    nothingSent();
    Value = value;
}

void ScrollBar::assigned(const void* property, bool changed) {
    if (property == &Value) settled();
    Control::assigned(property, changed);
    if (property == &Value && changed) raise(onChange_);
    if ((property == &Min || property == &Max) && (Value < Min || Value > Max)) Value = Value.get();
}

void CommandButton::UserClick() {
    if (usable()) raise(onClick_);
}

void TextBox::putBack(const std::string& text) {
    nothingSent();
    Text = text;
}

void TextBox::UserType(const std::string& text) {
    if (usable()) Text = text;
}

void TextBox::UserEnter() {
    if (!usable() || !onKeyPress_) return;
    userChange([&] { onKeyPress_(EnterKey); });
}

void TextBox::UserLeave() {
    if (!usable()) return;
    userChange([&] { raise(onLostFocus_); });
}

void TextBox::assigned(const void* property, bool changed) {
    if (property == &Text) settled();
    Control::assigned(property, changed);
}

}  // namespace kestrel

// The plain kinds of control.
#include "platform/basic_controls.h"

#include <algorithm>

#include "platform/numbers.h"

namespace kestrel {

std::string Label::accessibleName() const { return caption() ? caption()->Caption.get() : Caption.get(); }

void Label::UserClick() {
    userAct([this] {
        if (usable()) raise(onClick_);
    });
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

int ScrollBar::bounded(long long value) const {
    return static_cast<int>(std::max<long long>(Min, std::min<long long>(value, Max)));
}

bool ScrollBar::moveTo(int value) {
    if (bounded(value) == Value) return false;
    userChange([&] { Value = value; });
    return true;
}

void ScrollBar::putBack(int value) {
    nothingSent();
    Value = value;
}

void ScrollBar::assigned(const void* property, bool changed) {
    Control::assigned(property, changed);
    if (property == &Value && changed) raise(onChange_);
    if ((property != &Min && property != &Max) || (Value >= Min && Value <= Max)) return;
    isClipping_ = true;
    Value = Value.get();
    isClipping_ = false;
}

void CommandButton::UserClick() {
    userAct([this] {
        if (usable()) raise(onClick_);
    });
}

void TextBox::putBack(const std::string& text) {
    nothingSent();
    Text = text;
}

void TextBox::UserType(const std::string& typed) {
    userAct([this, typed] {
        if (!takesActs()) return;
        isTyping_ = true;
        Text = typed;
        isTyping_ = false;
    });
}

void TextBox::UserRestore(const std::string& held) {
    UserType(held);
    UserEnter();
}

void TextBox::assigned(const void* property, bool changed) {
    if (property == &Text && !isTyping_) settled_ = Text;
    Control::assigned(property, changed);
}

void TextBox::UserEnter() {
    userAct([this] {
        if (takesActs() && onKeyPress_) userChange([this] { onKeyPress_(EnterKey); });
    });
}

void TextBox::UserLeave() {
    userAct([this] {
        if (takesActs()) userChange([this] { raise(onLostFocus_); });
    });
}

}  // namespace kestrel

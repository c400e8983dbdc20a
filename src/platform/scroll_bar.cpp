// A bar.
#include "platform/scroll_bar.h"

#include <algorithm>

#include "platform/basic_controls.h"
#include "platform/numbers.h"

namespace kestrel {

void ScrollBar::design(int lowest, int highest, int largeStep) {
    Min = lowest;
    Max = highest;
    LargeChange = largeStep;
    Value = Value.get();  // inside the new limits
}

std::string ScrollBar::textOf(int value) const { return scale.words ? scale.words(value) : numberOf(value); }

std::string ScrollBar::numberOf(int value) const {
    if (scale.parse) return scale.words(value);
    return formatScaled(static_cast<std::int64_t>(value) + scale.offset, scale.decimals);
}

std::optional<int> ScrollBar::valueOf(const std::string& typed) const {
    const std::optional<std::int64_t> raw = scale.parse ? scale.parse(typed) : parseScaled(typed, scale.decimals);
    if (!raw) return std::nullopt;
    const std::int64_t value = *raw - scale.offset;
    if (value < Min || value > Max) return std::nullopt;
    return static_cast<int>(value);
}

Objection ScrollBar::objectionTo(const std::string& typed) const {
    if (valueOf(typed)) return Objection::None;
    if (!scale.parse && parseScaled(typed, scale.decimals)) return Objection::OutOfRange;
    return !scale.parse && parseScaled(typed, MostDecimals) ? Objection::TooFine : Objection::NoNumber;
}

int ScrollBar::bounded(long long value) const {
    return static_cast<int>(std::max<long long>(Min, std::min<long long>(value, Max)));
}

bool ScrollBar::moveTo(int value) {
    if (bounded(value) == Value) return false;
    userChange([&] { Value = value; });
    return true;
}

int ScrollBar::pace(int stepsBefore) const {
    constexpr int Slow = 10;
    constexpr int Quick = 30;
    if (!isWide() || stepsBefore < Slow) return 1;
    return stepsBefore < Quick ? 10 : 100;
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

void ScrollBar::show() {
    Movable::show();
    if (figure_) figure_->followBar();
}

std::string ScrollBar::boardsText() const { return figure_ ? figure_->Caption.get() : Movable::boardsText(); }

void ScrollBar::UserType(const std::string& text) {
    if (!takesActs()) return;
    end();
    open();
    forgetNotTaken();
    typed_ = text;
    show();
}

bool ScrollBar::UserEnter() {
    if (!typed_) return true;
    const std::optional<int> value = valueOf(*typed_);
    if (!value) return false;
    UserDropTyped();
    UserMove(*value);
    return true;
}

void ScrollBar::UserLeave() {
    if (UserEnter()) return;
    const std::string entered = *typed_;
    UserDropTyped();
    if (!entered.empty()) refuse(entered);
}

void ScrollBar::UserDropTyped() {
    if (!typed_) return;
    typed_.reset();
    end();
    show();
}

void ScrollBar::UserDrop() {
    UserDropTyped();
    Movable::UserDrop();
}

}  // namespace kestrel

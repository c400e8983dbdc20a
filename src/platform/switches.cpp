// Stepped and two-state switches.
#include "platform/switches.h"

#include <algorithm>

namespace kestrel {

namespace {

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

std::vector<std::string> SteppedSwitch::labels() const {
    std::vector<std::string> result;
    const std::string& list = PositionLabels;
    std::string::size_type from = 0;
    for (auto comma = list.find(','); comma != std::string::npos; comma = list.find(',', from)) {
        result.push_back(trimmed(list.substr(from, comma - from)));
        from = comma + 1;
    }
    if (const std::string last = trimmed(list.substr(from)); !last.empty()) result.push_back(last);
    return result;
}

int SteppedSwitch::top() const {
    const auto count = static_cast<int>(labels().size());
    return count > 0 ? count - 1 : 0;
}

std::string SteppedSwitch::text() const {
    const std::vector<std::string> all = labels();
    const auto at = static_cast<std::size_t>(Position.get());
    return Position >= 0 && at < all.size() ? all[at] : std::to_string(Position);
}

int SteppedSwitch::bounded(long long position) const {
    return static_cast<int>(std::max<long long>(0, std::min<long long>(position, top())));
}

bool SteppedSwitch::moveTo(int position) {
    if (position != bounded(position) || position == Position) return false;
    userChange([&] {
        Position = position;
        raise(onPositionChangeUser_);
    });
    return true;
}

void SteppedSwitch::putBack(int position) {
    nothingSent();
    Position = position;
}

void SteppedSwitch::assigned(const void* property, bool changed) {
    Control::assigned(property, changed);
    if (property == &Position && changed) raise(onPositionChange_);
}

void ToggleSwitch::UserClick() {
    userAct([this] {
        if (!takesActs()) return;
        userChange([this] {
            Active = !Active;
            raise(onClick_);
        });
    });
}

}  // namespace kestrel

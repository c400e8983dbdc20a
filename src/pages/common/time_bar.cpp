// A time of day over two bars.
#include "pages/common/time_bar.h"

#include "platform/numbers.h"
#include "platform/platform.h"

namespace kestrel {

namespace {

constexpr int MinutesOfHour = 60;
constexpr int LastMinute = 24 * MinutesOfHour - 1;
constexpr int LargeStep = 60;

std::string inWords(std::int64_t minutes) {
    return TimeOfDayText(
        {.hour = static_cast<int>(minutes) / MinutesOfHour, .minute = static_cast<int>(minutes) % MinutesOfHour});
}

/// "6:30", "6.30", "630" and "6" too.
std::optional<std::int64_t> parsed(const std::string& typed) {
    const auto mark = typed.find_first_of(":.,");
    const auto digits = typed.size() - (mark == std::string::npos ? 0 : 1);
    std::string hours = typed.substr(0, mark);
    std::string minutes = mark == std::string::npos ? std::string() : typed.substr(mark + 1);
    if (mark == std::string::npos && digits > 2) {
        minutes = typed.substr(typed.size() - 2);
        hours = typed.substr(0, typed.size() - 2);
    }
    const auto hour = parseScaled(hours, 0);
    const auto minute = minutes.empty() && mark == std::string::npos ? 0 : parseScaled(minutes, 0);
    if (!hour || !minute || *hour < 0 || *minute < 0 || *minute >= MinutesOfHour) return std::nullopt;
    return *hour * MinutesOfHour + *minute;
}

}  // namespace

void TimeBar::stand(ScrollBar& hours, ScrollBar& minutes) {
    hours_ = &hours;
    minutes_ = &minutes;
    Bar.design(0, LastMinute, LargeStep);
    Bar.scale.words = inWords;
    Bar.scale.parse = parsed;
    Bar.isTypedAlone = true;
    Figure.showsValue("00:00");
    Bar.OnChange([this] { handOn(); });
}

void TimeBar::follow() {
    for (const ScrollBar* each : {hours_, minutes_})
        if (each->unread() || each->waiting()) return;
    follows_ = true;
    Bar.Value = hours_->Value * MinutesOfHour + minutes_->Value;
    Figure.Caption = Bar.text();
    follows_ = false;
}

void TimeBar::handOn() {
    if (follows_) return;
    hours_->UserMove(Bar.Value / MinutesOfHour);
    minutes_->UserMove(Bar.Value % MinutesOfHour);
}

}  // namespace kestrel

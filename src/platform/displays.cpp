// Lamps and gauges.
#include "platform/displays.h"

namespace kestrel {

std::string Led::accessibleName() const {
    const std::string named = Control::accessibleName();
    return named.empty() ? ToolTip.get() : named;
}

void StripChart::setChannelName(std::size_t channel, const std::string& name) {
    channels_.at(channel).name = name;
    show();
}

void StripChart::addTime(double days) {
    times_.push_back(days);
    if (!updating_) show();
}

void StripChart::addSample(std::size_t channel, int index, double value) {
    channels_.at(channel).samples.push_back({index, value});
    if (!updating_) show();
}

void StripChart::endUpdate() {
    updating_ = false;
    show();
}

}  // namespace kestrel

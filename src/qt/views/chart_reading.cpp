// The point of a strip chart that the user reads.
#include "qt/views/chart_reading.h"

#include <algorithm>
#include <cmath>

namespace kestrel::qt {

void ChartReading::pointTo(double time, const std::vector<double>& times, std::size_t count) {
    const auto end = times.begin() + static_cast<std::ptrdiff_t>(std::min(count, times.size()));
    if (end == times.begin()) return drop();
    auto nearest = std::lower_bound(times.begin(), end, time);
    if (nearest == end || (nearest != times.begin() && time - *(nearest - 1) < *nearest - time)) --nearest;
    at_ = static_cast<std::size_t>(nearest - times.begin());
}

void ChartReading::step(int points, std::size_t count) {
    if (count == 0) return drop();
    const auto newest = static_cast<std::ptrdiff_t>(count) - 1;
    const std::ptrdiff_t from = at_ ? static_cast<std::ptrdiff_t>(*at_) + points : newest;
    at_ = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(from, 0, newest));
}

std::optional<double> valueAt(const StripChart::Channel& channel, std::size_t point) {
    const auto before = [](const StripChart::Sample& sample, std::size_t index) {
        return static_cast<std::size_t>(sample.index) < index;
    };
    const auto sample = std::lower_bound(channel.samples.begin(), channel.samples.end(), point, before);
    const bool isThere = sample != channel.samples.end() && static_cast<std::size_t>(sample->index) == point;
    if (!isThere || !std::isfinite(sample->value)) return std::nullopt;
    return sample->value;
}

}  // namespace kestrel::qt

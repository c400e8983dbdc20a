// The point of a strip chart that the user reads: by the pointer, or step by step by keys.
#pragma once

#include <optional>
#include <vector>

#include "platform/displays.h"

namespace kestrel::qt {

class ChartReading {
  public:
    /// The number of the point of the time axis, or nothing while the user reads none.
    const std::optional<std::size_t>& at() const { return at_; }
    void drop() { at_.reset(); }
    /// The point that is nearest to the time, of the first `count`.
    void pointTo(double time, const std::vector<double>& times, std::size_t count);
    /// So many points on or back, from the newest one if none was read.
    void step(int points, std::size_t count);

  private:
    std::optional<std::size_t> at_;
};

/// The channel's value at that point of the time axis, or nothing where it has none.
std::optional<double> valueAt(const StripChart::Channel& channel, std::size_t point);

}  // namespace kestrel::qt

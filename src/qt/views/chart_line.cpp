// The line of one channel of a strip chart.
#include "qt/views/chart_line.h"

#include <algorithm>
#include <cmath>

namespace kestrel::qt {

namespace {

/// What falls into one pixel column: its lowest and its highest point, in the order in which the line takes them.
class PixelColumn {
  public:
    void add(const QPointF& point) {
        if (points_ == 0) low_ = high_ = point;
        if (point.y() < low_.y()) low_ = point;
        if (point.y() > high_.y()) high_ = point;
        ++points_;
    }
    void flush(QPolygonF& line) {
        if (points_ > 0) line << (low_.x() <= high_.x() ? low_ : high_);
        if (points_ > 1) line << (low_.x() <= high_.x() ? high_ : low_);
        points_ = 0;
    }

  private:
    int points_ = 0;
    QPointF low_, high_;
};

}  // namespace

SampleRange samplesWithin(const StripChart::Channel& channel, const std::vector<double>& times, std::size_t count,
                          double from, double to) {
    const auto timesEnd = times.begin() + static_cast<std::ptrdiff_t>(std::min(count, times.size()));
    const auto firstTime = std::lower_bound(times.begin(), timesEnd, from) - times.begin();
    const auto lastTime = std::upper_bound(times.begin(), timesEnd, to) - times.begin();
    const auto before = [](const StripChart::Sample& sample, std::ptrdiff_t index) { return sample.index < index; };
    const auto& samples = channel.samples;
    const auto known = std::lower_bound(samples.begin(), samples.end(), timesEnd - times.begin(), before);
    auto first = std::lower_bound(samples.begin(), known, firstTime, before);
    auto end = std::lower_bound(samples.begin(), known, lastTime, before);
    if (first != samples.begin()) --first;
    if (end != known) ++end;
    return {static_cast<std::size_t>(first - samples.begin()), static_cast<std::size_t>(end - samples.begin())};
}

std::vector<QPolygonF> chartLine(const StripChart::Channel& channel, const std::vector<double>& times,
                                 const SampleRange& range, const ChartScale& scale) {
    std::vector<QPolygonF> lines(1);
    PixelColumn column;
    double columnNumber = 0;
    for (std::size_t i = range.first; i < range.end; ++i) {
        const StripChart::Sample& sample = channel.samples[i];
        if (sample.index < 0 || !std::isfinite(sample.value)) continue;
        const QPointF point(scale.x(times[static_cast<std::size_t>(sample.index)]), scale.y(sample.value));
        const bool gap = i > range.first && sample.index > channel.samples[i - 1].index + 1;
        if (gap || std::floor(point.x()) != columnNumber) column.flush(lines.back());
        if (gap) lines.emplace_back();
        columnNumber = std::floor(point.x());
        column.add(point);
    }
    column.flush(lines.back());
    return lines;
}

}  // namespace kestrel::qt

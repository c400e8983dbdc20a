// The line of one channel of a strip chart, thinned to what the pixels can show.
// However many samples there are, no pixel column gets more than two points.
#pragma once

#include <QPolygonF>
#include <vector>

#include "platform/displays.h"

namespace kestrel::qt {

/// Time and value of the plot's corners, and its place on the widget.
struct ChartScale {
    double from = 0;  ///< days
    double to = 1;
    double lowest = 0;
    double highest = 1;
    QRectF place;

    double x(double time) const { return place.left() + (time - from) / (to - from) * place.width(); }
    double y(double value) const { return place.bottom() - (value - lowest) / (highest - lowest) * place.height(); }
};

/// The samples within the stretch of time, and one more at either side; `count` points of the time axis are looked at.
struct SampleRange {
    std::size_t first = 0;
    std::size_t end = 0;
};
SampleRange samplesWithin(const StripChart::Channel& channel, const std::vector<double>& times, std::size_t count,
                          double from, double to);

/// The pieces of the line; it is broken where samples are missing.
std::vector<QPolygonF> chartLine(const StripChart::Channel& channel, const std::vector<double>& times,
                                 const SampleRange& range, const ChartScale& scale);

}  // namespace kestrel::qt

// Round steps for the marks of scales and axes.
#include "qt/style/scale.h"

#include <algorithm>
#include <cmath>

namespace kestrel::qt {

double roundStep(double range, int most) {
    const double least = std::max(range, 1e-9) / std::max(1, most);
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least) return factor * power;
    return 10 * power;
}

double roundTimeStep(double days, int most) {
    constexpr double Minute = 1.0 / (24 * 60);
    const double least = std::max(days, 0.0) / std::max(1, most);
    for (const int minutes : {1, 2, 5, 10, 15, 30, 60, 120, 180, 360, 720, 1440})
        if (minutes * Minute >= least) return minutes * Minute;
    return std::ceil(least);
}

}  // namespace kestrel::qt

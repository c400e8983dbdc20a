// What runs when.
#include "platform/time_line.h"

#include "platform/numbers.h"

namespace kestrel {

std::string TimeLine::text() const {
    std::string all;
    for (const Lane& lane : Lanes.get()) {
        if (lane.time == 0) continue;
        all += (all.empty() ? "" : ", ") + lane.name + " " + FormatDecimals(lane.delay / 10.0, 1) + " - " +
               FormatDecimals(lane.end() / 10.0, 1) + " s";
    }
    return all;
}

}  // namespace kestrel

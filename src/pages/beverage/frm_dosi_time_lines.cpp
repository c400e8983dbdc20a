// Doses: the time lines of the steps, drawn from what their bars hold.
#include <algorithm>

#include "pages/beverage/frm_dosi.h"
#include "pages/common/own_words.h"

namespace kestrel {

namespace {

/// The devices of a step in the order of its fields: a time and a delay each.
constexpr std::array<Own, 5> LaneNames = {Own::LaneValve, Own::LaneMixer, Own::LanePowder1, Own::LanePowder2,
                                          Own::LanePowder3};

constexpr int ScaleStep = 50;  ///< tenths of a second; the scale ends at a multiple

}  // namespace

/// Of a brewer the valve's time alone counts; what has not come and what the recipe does not reach does not run.
std::vector<TimeLine::Lane> FrmDosi::lanesOf(int number) {
    const Step& shown = step(number);
    const std::string& valve = shown.values[ValveField].Caption;
    const bool runs = !shown.bars[ValveField].unread() && valve != OffText && valve != NoValveText && !valve.empty();
    const bool brews = valve == FirstBrewerText || valve == SecondBrewerText;
    std::vector<TimeLine::Lane> lanes;
    for (std::size_t i = 0; i < LaneNames.size(); ++i) {
        TimeLine::Lane lane{OwnWord(LaneNames[i])};
        const ScrollBar& time = shown.bars[ValveTimeField + 2 * static_cast<int>(i)];
        const ScrollBar& delay = shown.bars[ValveTimeField + 2 * static_cast<int>(i) + 1];
        if (runs && (i == 0 || !brews) && !time.unread() && !delay.unread()) {
            lane.time = time.Value;
            lane.delay = brews ? 0 : delay.Value.get();
        }
        lanes.push_back(lane);
    }
    return lanes;
}

void FrmDosi::drawTimeLines() {
    std::array<std::vector<TimeLine::Lane>, RecipeSteps> all;
    bool reached = true;
    int end = 1;
    for (int i = 0; i < RecipeSteps; ++i) {
        std::vector<TimeLine::Lane>& lanes = all[static_cast<std::size_t>(i)];
        lanes = lanesOf(i);
        const std::string& valve = step(i).values[ValveField].Caption;
        reached = reached && valve != OffText && valve != NoValveText;
        for (TimeLine::Lane& lane : lanes) {
            if (!reached) lane.time = lane.delay = 0;
            end = std::max(end, lane.end());
        }
    }
    for (int i = 0; i < RecipeSteps; ++i) {
        timeLines[i].End = (end + ScaleStep - 1) / ScaleStep * ScaleStep;
        timeLines[i].Lanes = all[static_cast<std::size_t>(i)];
    }
}

}  // namespace kestrel

// The In/Out page over a bare mirror, for its tests: what the boards report, and which switches can be worked.
// All outputs are off and have been told.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "pages/diagnostics/frm_in_out.h"
#include "support/bare_mirror.h"

namespace kestrel::testing {

inline constexpr std::uint32_t There = 4;
inline constexpr const char* Both = "HotDrink Sector";

struct InOut : ::testing::Test {
    BareMirror mirror;
    FrmInOut& page = mirror.load<FrmInOut>();

    InOut() {
        for (int byte = 0; byte < 5; ++byte) mirror.arrive(1, 1292 + byte, 0);
        echoOfSector(0, 0);
    }
    void presence(std::uint32_t hotDrinkWord, std::uint32_t sectorWord) {
        mirror.arrive(0, 1, hotDrinkWord);
        mirror.arrive(0, 2, sectorWord);
    }
    void report(bool hotDrinkInTest, bool sectorInTest) {
        mirror.arrive(1, 1297, hotDrinkInTest ? 1 : 0);
        mirror.arrive(2, 290, sectorInTest ? 1 : 0);
    }
    /// Both boards there and in test, and what was written so far out of the way.
    void startTest() {
        presence(There, There);
        report(true, true);
        mirror.deliverAll();
    }
    void echoOfSector(std::uint32_t group, std::uint32_t bit) {
        mirror.arrive(2, 288, group);
        mirror.arrive(2, 289, bit);
    }
    bool isDue(const BoardValue& write) { return std::ranges::count(mirror.due(), write) > 0; }
    /// The boards whose switches can all be worked; "?" for a board that is locked by halves.
    std::string live() {
        const auto part = [](auto& switches, const char* name) -> std::string {
            const auto usable = std::ranges::count_if(switches, [](LedSwitch& each) { return each.usable(); });
            return usable == 0 ? "" : usable == switches.size() ? name : "?";
        };
        EXPECT_EQ(page.SwitchLed4.usable(), page.SwitchLed3[0].usable());
        return part(page.SwitchLed1, "HotDrink ") + part(page.SwitchLed3, "Sector");
    }
};
}  // namespace kestrel::testing

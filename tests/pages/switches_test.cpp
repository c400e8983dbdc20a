// Every switch and toggle of every page that stands for a setting: it shows its own number or bit, and a move writes
// that and its copy, and no other bit of the byte. A row is a run of switches in reading order from `place` on. From
// `bit` on they stand for the bits of one parameter, or with `Number` for consecutive parameters, whose values are
// their positions.
#include <gtest/gtest.h>

#include "support/layouts.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

constexpr int Number = -1;

struct SwitchRun {
    const char* page;
    std::size_t place;
    int count;
    Setting first;
    int bit;
    std::uint32_t raw;          ///< of the first parameter; the others hold the next numbers
    std::uint32_t payment = 4;  ///< the payment system whose switches are live
    std::size_t placeStep = 1;
};

const SwitchRun AllRuns[] = {
    {"FrmConMac", 3, 1, {1, 1157, 1162}, Number, 4},
    {"FrmConMac", 7, 4, {1, 1304, 1337}, Number, 0},
    {"FrmConMac", 4, 3, {1, 1334, 1367}, Number, 1},
    {"FrmInter", 0, 5, {1, 1380, 1392}, 0, 0x15},
    {"FrmProUni", 0, 3, {1, 1394, 1403}, Number, 1},
    {"FrmProUni", 3, 1, {1, 1299, 1301}, 4, 0x57},
    {"FrmPresel", 0, 4, {1, 1412, 1424}, Number, 1, 4, 2},
    {"FrmPresel", 1, 4, {1, 1416, 1428}, Number, 2, 4, 2},
    {"FrmDosi", 0, 1, {1, 1071, 1075}, 0, 0xA5},
    {"FrmDosi", 1, 1, {1, 1455, 1459}, 0, 0xA5},
    {"FrmDosi", 2, 1, {1, 1063, 1067}, 0, 0xA4},
    {"FrmDosi", 3, 1, {1, 1079, 1083}, 0, 0xA5},
    {"FrmDosi", 4, 1, {1, 1087, 1091}, 0, 0xA4},
    {"FrmPagamento", 10, 1, {0, 346, 347}, 0, 0xFE, 2},
    {"FrmPagamento", 0, 1, {0, 84, 86}, 5, 0x85},
    {"FrmPagamento", 1, 1, {0, 348, 349}, 1, 0xFC},
    {"FrmPagamento", 3, 1, {0, 330, 331}, 0, 0x8001},
    {"FrmPagamento", 5, 1, {0, 344, 345}, 0, 0x0006},
    {"FrmPagamento", 6, 2, {0, 84, 86}, 3, 0x85},
    {"FrmPagamento", 8, 1, {0, 84, 86}, 6, 0x85},
    {"FrmPrezzi", 0, 1, {0, 84, 86}, 0, 9},
    {"FrmOpzioni", 0, 1, {0, 84, 86}, 2, 0xA5},
    {"FrmOpzioni", 1, 1, {0, 84, 86}, 1, 0xA5},
    {"FrmOpzioni", 2, 1, {0, 84, 86}, 7, 0xA5},
    {"FrmOpzioni", 3, 1, {0, 85, 87}, 5, 0xD8},
    {"FrmOpzioni", 4, 1, {0, 350, 351}, Number, 2},
    {"FrmOpzioni", 7, 1, {1, 1153, 1158}, Number, 1},
    {"FrmOpzioni", 8, 1, {1, 1298, 1300}, 0, 0xA5},
    {"FrmOpzioni", 9, 1, {1, 1299, 1301}, 1, 0xA5},
    {"FrmOpzioni", 10, 3, {1, 1298, 1300}, 2, 0xA5},
    {"FrmOpzioni", 13, 1, {1, 1299, 1301}, 2, 0xA5},
    {"FrmOpzioni", 14, 1, {1, 1299, 1301}, 0, 0xA5},
    {"FrmOpzioni", 15, 1, {2, 59, 274}, 3, 0xA5},
    {"FrmOpzioni", 16, 3, {2, 59, 274}, 0, 0xA5},
};

/// Switches and toggles alike: their positions are numbers.
struct Switch {
    SteppedSwitch* stepped;
    ToggleSwitch* toggle;
    Control& control() const { return stepped ? static_cast<Control&>(*stepped) : *toggle; }
    int position() const { return stepped ? stepped->Position.get() : toggle->Active.get(); }
    void move(int to) const { stepped ? stepped->UserMove(to) : toggle->UserClick(); }
};

std::vector<Switch> switchesOf(const Layout& layout) {
    std::vector<Switch> all;
    eachControl(layout, [&](Control& control) {
        const Switch each = {dynamic_cast<SteppedSwitch*>(&control), dynamic_cast<ToggleSwitch*>(&control)};
        if (each.stepped || each.toggle) all.push_back(each);
    });
    return all;
}

TEST(Switches, EachShowsItsNumberOrBitAndWritesThatAndItsCopy) {
    for (const SwitchRun& run : AllRuns) {
        SCOPED_TRACE(std::string(run.page) + " from switch " + std::to_string(run.place));
        StartedWorld world({{0, 85, run.payment}, {1, 1153, 1}, {1, 1155, 3}, {1, 1156, 5}, {1, 7, 1}});
        const bool numbers = run.bit == Number;
        if (numbers)
            world.setBoards(run.first.bank, run.first.parameter, run.count, run.raw);
        else
            world.setBoard(run.first.bank, run.first.parameter, run.raw);
        auto& page = world.open<Page>(run.page);
        world.run(6'000);
        const auto switches = switchesOf(page.Arrange());
        std::uint32_t byte = run.raw;
        for (int i = 0; i < run.count; ++i) {
            const Switch& each = switches.at(run.place + run.placeStep * static_cast<std::size_t>(i));
            const int before = numbers ? static_cast<int>(run.raw) + i : static_cast<int>(byte >> (run.bit + i) & 1U);
            ASSERT_EQ(each.position(), before) << i;
            const int to = before == 0 ? 1 : before - 1;
            byte ^= numbers ? 0 : 1U << (run.bit + i);
            const int next = numbers ? i : 0;
            const Setting setting = {run.first.bank, run.first.parameter + next, run.first.shadow + next};
            const auto move = [&] {
                each.move(to);
                EXPECT_TRUE(each.control().waiting());
            };
            EXPECT_EQ(writesOf(world, move), setting.as(numbers ? static_cast<std::uint32_t>(to) : byte)) << i;
            EXPECT_EQ(each.position(), to) << i;
            EXPECT_FALSE(each.control().waiting()) << i;
        }
    }
}

}  // namespace
}  // namespace kestrel::testing

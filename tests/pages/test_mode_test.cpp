// The In/Out page on the whole simulated machine: what goes over the line, and what faults can do.
// A board must never drive what the last click did not ask for, whatever the line loses.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "link/param_table.h"
#include "pages/diagnostics/frm_in_out.h"
#include "support/world.h"

namespace kestrel::testing {
namespace {

constexpr int HotDrinkOutput = 1292;
constexpr int CedarGroup = 288;
constexpr int CedarBit = 289;

FrmInOut& startTest(World& world) {
    auto& page = world.open<FrmInOut>("FrmInOut");
    page.Command1.UserClick();
    world.run(3000);
    return page;
}

TEST(TestMode, StartsSwitchesAndRunsOutOnTheBoardsThatAreThere) {
    for (const auto& [hotDrink, sector] : {std::pair(true, true), std::pair(true, false), std::pair(false, true)}) {
        StartedWorld world(World::still(hotDrink, sector));
        FrmInOut& page = startTest(world);
        EXPECT_EQ(page.Label7.Caption.get(), "TEST in corso");
        EXPECT_EQ(page.SwitchLed1[18].usable(), hotDrink);
        EXPECT_EQ(page.SwitchLed3[20].usable(), sector);
        EXPECT_TRUE(!sector || page.iAnalogX2.Value == world.board(2, 51)) << "a tank at rest stands at its set-point";

        page.SwitchLed1[18].UserClick();
        world.run(2000);
        EXPECT_EQ(page.SwitchLed1[18].Active, hotDrink);
        EXPECT_EQ(page.SwitchLed1[18].usable(), hotDrink);
        EXPECT_FALSE(page.SwitchLed1[18].waiting());
        EXPECT_TRUE(!hotDrink || world.board(1, HotDrinkOutput + 2) == 4);

        page.SwitchLed3[20].UserClick();
        world.run(3000);
        page.SwitchLed4.UserClick();
        world.run(3000);
        EXPECT_EQ(page.SwitchLed3[20].Active && page.SwitchLed4.Active, sector);
        EXPECT_EQ(page.SwitchLed3[21].usable(), sector);
        EXPECT_TRUE(!sector || (world.board(2, CedarGroup) == 0x84 && world.board(2, CedarBit) == 0x10));

        world.run(65'000);
        EXPECT_EQ(page.Label7.Caption.get(), "Normale");
        EXPECT_FALSE(page.SwitchLed1[18].usable() || page.SwitchLed3[20].usable());
        EXPECT_FALSE(page.SwitchLed1[18].Active || page.SwitchLed3[20].Active) << "the boards switch their outputs off";
    }
}

/// What the boards drive, against what clicks have asked them to drive; all off is always allowed.
class Outputs {
  public:
    explicit Outputs(World& world) : world_(world) {}

    void askedOfHotDrink() {
        hotDrinkAsked_.insert({mirror(1, 2), mirror(1, 3), mirror(1, 4), mirror(1, 5), mirror(1, 6)});
    }
    /// Without a group the bit means nothing: the compressor alone.
    void askedOfSector() {
        const bool anyGroup = (mirror(2, 285) & 0x3F) != 0;
        sectorAsked_.insert({mirror(2, 285), anyGroup ? mirror(2, 286) : 0});
    }
    /// Whether everything that a board has begun to drive since the last look was asked for by one click.
    bool lookFine() {
        const HotDrinkBytes hotDrink = {world_.board(1, 1292), world_.board(1, 1293), world_.board(1, 1294),
                                        world_.board(1, 1295), world_.board(1, 1296)};
        const SectorBytes sector = {world_.board(2, CedarGroup), world_.board(2, CedarBit)};
        changes += hotDrink != hotDrinkDriven_ || sector != sectorDriven_ ? 1 : 0;
        hotDrinkDriven_ = hotDrink;
        sectorDriven_ = sector;
        return hotDrinkAsked_.contains(hotDrink) && sectorAsked_.contains(sector);
    }
    int changes = 0;

  private:
    using HotDrinkBytes = std::array<std::uint32_t, 5>;
    using SectorBytes = std::array<std::uint32_t, 2>;
    static std::uint32_t mirror(int bank, int parameter) {
        return static_cast<std::uint32_t>(ParamRead(parameter, bank));
    }
    World& world_;
    std::set<HotDrinkBytes> hotDrinkAsked_{HotDrinkBytes{}};
    std::set<SectorBytes> sectorAsked_{SectorBytes{}};
    HotDrinkBytes hotDrinkDriven_{};
    SectorBytes sectorDriven_{};
};

template <class Switches>
bool alike(Switches& switches) {
    return std::ranges::all_of(switches, [&](auto& each) { return each.Enabled == switches[0].Enabled; });
}

class FaultyTestMode : public ::testing::TestWithParam<const char*> {};

TEST_P(FaultyTestMode, NothingIsDrivenThatTheLastClickDidNotAskForAndNoBoardIsLockedByHalves) {
    StartedWorld world;
    FrmInOut& page = startTest(world);
    Outputs outputs(world);
    bool fine = true;
    bool whole = true;
    world.platform.afterEvent = [&] {
        fine = fine && outputs.lookFine();
        whole = whole && alike(page.SwitchLed1) && alike(page.SwitchLed3) &&
                page.SwitchLed4.Enabled == page.SwitchLed3[0].Enabled;
    };
    world.machine.setFaults(simulator::parseFaults(GetParam()));
    std::mt19937 chance(1);
    const auto upTo = [&](int count) { return static_cast<int>(chance() % static_cast<unsigned>(count)); };
    for (int step = 0; step < 80 && fine && whole; ++step) {
        const int what = upTo(8);
        if (what < 3 && page.SwitchLed1[0].usable()) {
            page.SwitchLed1[upTo(FrmInOut::HotDrinkOutputs)].UserClick();
            world.letActsIn();
            outputs.askedOfHotDrink();
        } else if (what < 6 && page.SwitchLed4.usable()) {
            what == 5 ? page.SwitchLed4.UserClick() : page.SwitchLed3[upTo(FrmInOut::SectorOutputs)].UserClick();
            world.letActsIn();
            outputs.askedOfSector();
        } else if (page.Label7.ForeColor == 255) {
            page.Command1.UserClick();
        }
        world.run(100 + upTo(4000));
    }
    EXPECT_TRUE(fine) << "a board drives what nobody asked for";
    EXPECT_TRUE(whole);
    EXPECT_GT(outputs.changes, 5) << "too little happened to say anything";

    world.machine.setFaults({});
    world.run(30'000);
    for (int i = 0; i < FrmInOut::HotDrinkOutputs; ++i)
        EXPECT_EQ(page.SwitchLed1[i].Active, ((world.board(1, HotDrinkOutput + i / 8) >> (i % 8)) & 1) != 0) << i;
    EXPECT_EQ(page.SwitchLed4.Active, (world.board(2, CedarGroup) & 0x80) != 0);
    EXPECT_EQ(page.SwitchLed1[0].usable(), page.SwitchLed3[0].usable());
    world.platform.afterEvent = nullptr;
}

/// Replies later than the link waits are left out: they carry no address, so that no page can tell whose they are.
INSTANTIATE_TEST_SUITE_P(All, FaultyTestMode,
                         ::testing::Values("silent=0.2", "drop=0.1,extra=0.05", "flip=0.2", "ack=0.2", "slow=0.2",
                                           "noise=0.3", "lost=0.02", "port=0.02", "reset=0.003",
                                           "silent=0.1,slow=0.3"));

}  // namespace
}  // namespace kestrel::testing

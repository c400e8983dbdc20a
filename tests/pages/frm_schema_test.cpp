// The hydraulic schema: each bit on the lamp of its device, and nothing but looking.
// The drawing itself is checked too: a lamp without a place in it would stand in a corner.
#include "pages/diagnostics/frm_schema.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "pages/diagnostics/frm_test_cedar.h"
#include "support/bare_mirror.h"
#include "support/layouts.h"
#include "support/world.h"

namespace kestrel::testing {
namespace {

constexpr int No = -1;

struct Word {
    int parameter;
    bool output;  ///< a set bit lights; else an input, which a clear bit lights
    std::array<int, 8> lampOfBit;
};
constexpr Word Words[] = {
    {1289, false, {0, 1, 2, 3, 4, 5, 6, 7}},        {1290, false, {8, No, 9, No, No, No, No, No}},
    {1292, true, {0, 1, 2, 3, 4, 5, 6, 7}},         {1293, true, {8, 9, 10, 11, No, No, No, No}},
    {1294, true, {12, 13, 14, 15, 16, 17, 18, 19}}, {1295, true, {20, 21, 22, No, No, No, No, No}}};

using Lamps = std::vector<int>;

struct Schema : ::testing::Test {
    BareMirror mirror;
    FrmSchema& page = mirror.load<FrmSchema>();
};

TEST_F(Schema, EachBitLightsTheLampOfItsDeviceAndNoOther) {
    for (const Word& word : Words)
        for (unsigned bit = 0; bit < 8; ++bit) {
            const std::uint32_t one = 1U << bit;
            mirror.arrive(1, word.parameter, word.output ? one : 255 & ~one);
            const int lamp = word.lampOfBit[bit];
            const Lamps own = lamp == No ? Lamps{} : Lamps{lamp};
            EXPECT_EQ(std::pair(lit(page.Led), lit(page.iLed)),
                      word.output ? std::pair(own, Lamps{}) : std::pair(Lamps{}, own))
                << word.parameter << " bit " << bit;
            mirror.arrive(1, word.parameter, word.output ? 0 : 255);
        }
    EXPECT_TRUE(mirror.due().empty());
}

TEST_F(Schema, OtherBanksAndOtherParametersLightNothing) {
    for (int n = 1285; n < 1300; ++n) {
        mirror.arrive(0, n, 0xA5);
        mirror.arrive(2, n, 0xA5);
    }
    mirror.arrive(1, 1291, 0);
    mirror.arrive(1, 1296, 255);
    EXPECT_TRUE(lit(page.Led).empty());
    EXPECT_TRUE(lit(page.iLed).empty());
    EXPECT_EQ(page.iThermometerX1.Value, 0);
}

TEST_F(Schema, GaugeAndFiguresShowTheSameReadingAndKeepItWhenOneIsTooLarge) {
    const std::pair<std::uint32_t, double> readings[] = {{0, 0}, {97, 97}, {32767, 32767}, {32768, 32767}, {5, 5}};
    for (const auto& [reading, shown] : readings) {
        mirror.arrive(1, 1288, reading);
        EXPECT_EQ(page.iThermometerX1.Value, shown);
        EXPECT_EQ(page.iSevenSegmentAnalogX1.Value, shown);
    }
}

/// Every control that stands on a drawing, against the elements of the drawing of that name.
void expectPlaces(const Layout& layout) {
    if (layout.kind == Layout::Kind::Canvas) {
        const auto* picture = dynamic_cast<const Picture*>(layout.control);
        ASSERT_NE(picture, nullptr);
        std::ifstream file(InstallationDirectory() / "pictures" / (picture->drawing() + ".svg"));
        std::stringstream drawing;
        drawing << file.rdbuf();
        for (const std::string& place : layout.places)
            EXPECT_NE(drawing.str().find("id=\"" + place + "\""), std::string::npos)
                << place << " in " << picture->drawing();
        EXPECT_FALSE(layout.places.empty());
    }
    for (const Layout& child : layout.children) expectPlaces(child);
}

TEST_F(Schema, AndTheModelTestHaveAPlaceForEveryControlThatStandsOnADrawing) {
    expectPlaces(page.Arrange());
    expectPlaces(mirror.load<FrmTestCedar>().Arrange());
}

}  // namespace
}  // namespace kestrel::testing

// The hydraulic schema: what its gauges show.
// The drawing itself is checked too: a lamp without a place in it would stand in a corner.
#include "pages/diagnostics/frm_schema.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "pages/diagnostics/frm_test_cedar.h"
#include "support/bare_mirror.h"
#include "support/world.h"

namespace kestrel::testing {
namespace {

struct Schema : ::testing::Test {
    BareMirror mirror;
    FrmSchema& page = mirror.load<FrmSchema>();
};

TEST_F(Schema, GaugeAndFiguresShowTheSameReadingAndKeepItWhenOneIsTooLarge) {
    const std::pair<std::uint32_t, double> readings[] = {{0, 0}, {97, 97}, {32767, 32767}, {32768, 32767}, {5, 5}};
    for (const auto& [reading, shown] : readings) {
        mirror.arrive(1, 1288, reading);
        EXPECT_EQ(page.iThermometerX1.Value, shown);
        EXPECT_EQ(page.iSevenSegmentAnalogX1.Value, shown);
    }
    EXPECT_EQ(page.iThermometerX1.accessibleName() + page.iSevenSegmentAnalogX1.accessibleName(), "BoilerBoiler");
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

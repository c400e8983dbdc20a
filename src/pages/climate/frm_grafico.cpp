// Temperature graph: boiler and tank temperature over time.
#include "pages/climate/frm_grafico.h"

#include <array>
#include <limits>

#include "language/language_files.h"
#include "link/presence.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/own_words.h"
#include "platform/errors.h"

namespace kestrel {

namespace {

constexpr std::array<ParamRun, 5> Subscriptions = {{
    sector::TankOffset,
    sector::TankTemperature,
    master::SectorPresence,
    master::HotDrinkPresence,
    hot_drink::BoilerTemperature,
}};

constexpr int OffsetZero = 5;
constexpr int BoilerChannel = 0;
constexpr int TankChannel = 1;

constexpr int SampleInterval = 4000;                  ///< milliseconds
constexpr double SampleStep = 4.6296296296296294e-5;  ///< the same in days

constexpr int TitleLine = 28;
constexpr int BoilerLine = 320;
constexpr int TankLine = 321;
constexpr int ChartTitleLine = 322;

/// Degrees from the board's fixed-point number with its correction.
double tankDegrees(ParamValue raw, int offset) {
    const double degrees = static_cast<double>(raw) / 256 + offset;
    return degrees >= 128 ? degrees - 256 : degrees;
}

}  // namespace

FrmGrafico::FrmGrafico() : TablePage("FrmGrafico", TitleLine, {Subscriptions}) {
    Timer1.OnTimer([this] { Timer1_Timer(); });
}

Layout FrmGrafico::Arrange() { return Column{iStripChartX1}; }

void FrmGrafico::Form_Load() {
    TablePage::Form_Load();
    Timer1.Interval = SampleInterval;
    Timer1.Enabled = true;
}

void FrmGrafico::Form_Unload() {
    TablePage::Form_Unload();
    Timer1.Enabled = false;
}

void FrmGrafico::PageCaptions() {
    TablePage::PageCaptions();
    iStripChartX1.Title = LanguageTable(ChartTitleLine);
    iStripChartX1.Unit = "°C";
    iStripChartX1.TimeAxis = OwnWord(Own::TimeAxis);
    iStripChartX1.ToolTip = OwnWord(Own::ChartReading);
    iStripChartX1.setChannelName(BoilerChannel, LanguageTable(BoilerLine));
    iStripChartX1.setChannelName(TankChannel, LanguageTable(TankLine));
}

void FrmGrafico::Timer1_Timer() {
    iStripChartX1.beginUpdate();
    iStripChartX1.addTime(ChartTime);
    if (SaysPresent(Param1)) iStripChartX1.addSample(BoilerChannel, SampleCount, BoilerValue);
    if (SaysPresent(Param2)) iStripChartX1.addSample(TankChannel, SampleCount, TankValue);
    iStripChartX1.endUpdate();
    if (SampleCount == std::numeric_limits<std::int16_t>::max()) throw RunTimeError(error_number::Overflow, "Overflow");
    ++SampleCount;
    ChartTime += SampleStep;
}

void FrmGrafico::SLabel_Change(int n, ParamValue value) {
    if (Arrived(n, master::SectorPresence)) Param2 = value;
    if (Arrived(n, master::HotDrinkPresence)) Param1 = value;
    if (Arrived(n, hot_drink::BoilerTemperature)) BoilerValue = static_cast<double>(value);
    if (Arrived(n, sector::TankOffset)) TankOffset = static_cast<int>(value) - OffsetZero;
    if (Arrived(n, sector::TankTemperature) && ParamIsFresh(sector::TankOffset))
        TankValue = tankDegrees(value, TankOffset);
}

}  // namespace kestrel

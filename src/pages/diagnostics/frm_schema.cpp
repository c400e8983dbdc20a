// Hydraulic schema: the machine's water circuit with lamps on it.
#include "pages/diagnostics/frm_schema.h"

#include <array>

#include "language/language_files.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/int16.h"
#include "pages/common/lamp_runs.h"

namespace kestrel {

namespace {

constexpr std::array<ParamRun, 4> Subscriptions = {{
    hot_drink::Inputs[0],
    hot_drink::Inputs[1],
    hot_drink::Outputs.first(4),
    hot_drink::BoilerTemperature,
}};

constexpr std::array<LampRun, 3> InputLamps = {{
    {hot_drink::Inputs[0], 0, 8, 0},
    {hot_drink::Inputs[1], 0, 1, 8},
    {hot_drink::Inputs[1], 2, 1, 9},
}};

constexpr std::array<LampRun, 4> OutputLamps = {{
    {hot_drink::Outputs[0], 0, 8, 0},
    {hot_drink::Outputs[1], 0, 4, 8},
    {hot_drink::Outputs[2], 0, 8, 12},
    {hot_drink::Outputs[3], 0, 3, 20},
}};

constexpr int TitleLine = 34;  // that of the menu
constexpr int OutputLine = 415;
constexpr int InputLine = 438;
constexpr int LegendLine = 448;
constexpr int Boiler = 6;  // in the legend

}  // namespace

FrmSchema::FrmSchema() : Page("FrmSchema") {
    for (kestrel::Led& lamp : Led) lamp.shape = kestrel::Led::Shape::Round;
    for (int i = 0; i < Devices; ++i) {
        legendNumbers_[i].showsValue("00");
        legendNumbers_[i].standsForNoValue = true;
        legendNumbers_[i].Caption = std::to_string(i + 1);
    }
    for (Control* gauge : {static_cast<Control*>(&iThermometerX1), static_cast<Control*>(&iSevenSegmentAnalogX1)})
        gauge->namedBy(&Label1[Boiler]);
    iSevenSegmentAnalogX1.digits = 3;
}

Layout FrmSchema::Arrange() {
    std::vector<std::pair<Control*, std::string>> placed;
    placed.reserve(Outputs + Inputs + 2);
    for (int i = 0; i < Outputs; ++i) placed.emplace_back(&Led[i], "led" + std::to_string(i));
    for (int i = 0; i < Inputs; ++i) placed.emplace_back(&iLed[i], "iled" + std::to_string(i));
    placed.emplace_back(&iThermometerX1, "thermometer");
    placed.emplace_back(&iSevenSegmentAnalogX1, "reading");
    return Row{
        Canvas(Image1, placed),
        Rows(Indexes(0, Devices - 1), legendNumbers_, Label1),
    };
}

void FrmSchema::Form_Load() {
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
}

void FrmSchema::Form_Activate() { PageCaptions(); }

void FrmSchema::Form_Unload() { PageRelease(); }

void FrmSchema::PageSubscribe() { WatchAll(Subscriptions); }

void FrmSchema::PageRelease() { ReleaseAll(Subscriptions); }

void FrmSchema::PageCaptions() {
    Caption = LanguageTable(TitleLine);
    for (int i = 0; i < Outputs; ++i) Led[i].ToolTip = LanguageTable(OutputLine + i);
    for (int i = 0; i < Inputs; ++i) iLed[i].ToolTip = LanguageTable(InputLine + i);
    for (int i = 0; i < Devices; ++i) Label1[i].Caption = LanguageTable(LegendLine + i);
}

void FrmSchema::SLabel_Change(int n, ParamValue value) {
    ShowLamps(iLed, InputLamps, LitBy::ClearBits, n, value);
    ShowLamps(Led, OutputLamps, LitBy::SetBits, n, value);
    if (!Arrived(n, hot_drink::BoilerTemperature)) return;
    const double reading = ToInt16(value);
    iThermometerX1.Value = reading;
    iSevenSegmentAnalogX1.Value = reading;
}

}  // namespace kestrel

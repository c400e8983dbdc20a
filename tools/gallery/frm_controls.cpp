// Every kind of control in every state.
#include "gallery/frm_controls.h"

#include <cmath>

namespace kestrel {

namespace {

constexpr int Red = 255;
constexpr int Green = 65280;

template <class Controls>
void setCaptionsOf(Controls& controls, const std::vector<std::string>& captions) {
    for (int i = 0; i < controls.size(); ++i) controls[i].Caption = captions.at(static_cast<std::size_t>(i));
}

}  // namespace

FrmControls::FrmControls() : Page("FrmControls") {
    isSelector = true;
    for (int i = 0; i < BarValue.size(); ++i) BarValue[i].showsValue("65.535");
    AbsentValue.showsValue("65.535");
    DrawnValue.showsValue("99.9");
    for (int i : {0, 1}) DrawnLamp[i].shape = Led::Shape::Round;
    for (int i = 0; i < RoundLamp.size(); ++i) RoundLamp[i].shape = Led::Shape::Round;
    for (int i = 0; i < Text.size(); ++i) Text[i].maxLength = 6;
    const auto click = [this] { ++clicks; };
    Words[3].OnClick(click);
    DrawnKey.OnClick(click);
    Command[0].OnClick(click);
    Text.OnKeyPress([](int, int) {});
}

Layout FrmControls::Arrange() {
    return Row{
        Column{
            Group(BarFrame, Rows(Indexes(0, 4), BarCaption, Bar, BarValue)),
            Group(StepFrame, Column{Rows(Indexes(0, 5), SliderCaption, Slider),
                                    Grid(4, {RotaryCaption[0], Rotary[0], RotaryCaption[1], Rotary[1], RotaryCaption[2],
                                             Rotary[2], RotaryCaption[3], Rotary[3]})}),
            Group(AbsentFrame, Row{AbsentCaption, AbsentBar, AbsentValue, AbsentSlider, AbsentToggle}),
        },
        Column{
            Row{Group(TwoStateFrame, Rows(Indexes(0, 4), TwoStateCaption, Toggle, Switch)),
                Group(LampFrame, Rows(Indexes(0, 3), LampCaption, SquareLamp, RoundLamp))},
            Group(GaugeFrame, Column{Rows(Indexes(0, 2), GaugeCaption, Segments, Number, Clock),
                                     Row{Gauge[0], Gauge[1], Gauge[2], Column{Progress[0], Progress[1]}}}),
            Group(TextFrame, Row{Rows(Indexes(0, 2), TextCaption, Text), Column{Command[0], Command[1], Words[3]},
                                 Column{TextCaption[3], Words[0], Words[1], Words[2]}}),
        },
        Column{
            Group(ListFrame, Table),
            Group(ChartFrame, Chart),
            Group(PictureFrame, Canvas(Drawing, {{&DrawnLamp[0], "lamp0"},
                                                 {&DrawnLamp[1], "lamp1"},
                                                 {&DrawnLamp[2], "lamp2"},
                                                 {&DrawnLamp[3], "lamp3"},
                                                 {&DrawnValue, "value"},
                                                 {&DrawnKey, "key"}})),
        },
    };
}

void FrmControls::Form_Load() {
    setCaptions();
    setBars();
    setSwitches();
    setDisplays();
    setTexts();
    fillChart();
}

void FrmControls::setCaptions() {
    Caption = "Controls";
    BarFrame.Caption = "Bars";
    StepFrame.Caption = "Slider and rotary switches";
    TwoStateFrame.Caption = "Toggles, LED switches";
    LampFrame.Caption = "Lamps";
    GaugeFrame.Caption = "Displays and gauges";
    TextFrame.Caption = "Texts and buttons";
    AbsentFrame.Caption = "A frame that is disabled";
    ListFrame.Caption = "List";
    ChartFrame.Caption = "Strip chart";
    PictureFrame.Caption = "Controls on a drawing";
    setCaptionsOf(BarCaption, {"plain", "disabled", "waiting", "out of range", "amount"});
    setCaptionsOf(SliderCaption, {"plain", "long labels", "sixteen", "disabled", "waiting", "out of range"});
    setCaptionsOf(RotaryCaption, {"rotary", "disabled", "waiting", "out of range"});
    setCaptionsOf(TwoStateCaption, {"off", "on", "disabled off", "disabled on", "waiting"});
    setCaptionsOf(LampCaption, {"off", "on", "disabled off", "disabled on"});
    setCaptionsOf(GaugeCaption, {"plain", "disabled", "out of range"});
    setCaptionsOf(TextCaption, {"plain", "disabled", "waiting", "colours"});
    setCaptionsOf(Command, {"Start test", "Disabled"});
    setCaptionsOf(Words, {"disabled text", "Normal", "Test running", "can be clicked"});
    AbsentCaption.Caption = "absent board";
    DrawnKey.ToolTip = "key of the drawing";
    for (Led& lamp : DrawnLamp) lamp.ToolTip = "lamp of the drawing";
    for (Thermometer& gauge : Gauge) gauge.ToolTip = "gauge";
    for (ProgressBar& bar : Progress) bar.ToolTip = "progress";
}

void FrmControls::setBars() {
    for (int i = 0; i < 4; ++i) Bar[i].design(0, 255, 10);
    for (int i = 0; i < 4; ++i) Bar[i].scale = {0, 1};
    Bar[4].design(-32768, 32767, 100);
    Bar[4].scale = {32768, 2};
    const std::vector<int> values = {120, 45, 80, 255, -32618};
    const std::vector<std::string> shown = {"12.0", "4.5", "8.0", "30.0", "1.50"};
    for (int i = 0; i < Bar.size(); ++i) {
        Bar[i].Value = values.at(static_cast<std::size_t>(i));
        BarValue[i].Caption = shown.at(static_cast<std::size_t>(i));
    }
    for (Control* each :
         {static_cast<Control*>(&BarCaption[1]), static_cast<Control*>(&Bar[1]), static_cast<Control*>(&BarValue[1])})
        each->Enabled = false;
    Bar[2].UserMove(96);
    AbsentFrame.Enabled = false;
    AbsentBar.Value = 70;
    AbsentValue.Caption = "70";
    AbsentSlider.PositionLabels = "Off, On";
    AbsentSlider.Position = 1;
    AbsentToggle.Active = true;
}

void FrmControls::setSwitches() {
    const std::string sixteen = "1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16";
    const std::vector<std::string> labels = {
        "Off, On",   "Normale, ECS differenziato, Price holding", sixteen, "Off, On", "00000, 0000.0, 000.00, 00.000",
        "0, 1, 2, 3"};
    for (int i = 0; i < Slider.size(); ++i) {
        Slider[i].PositionLabels = labels.at(static_cast<std::size_t>(i));
        Slider[i].Position = i == 5 ? 9 : 1;
    }
    Slider[3].Enabled = false;
    SliderCaption[3].Enabled = false;
    Slider[4].UserMove(2);
    for (int i = 0; i < Rotary.size(); ++i) {
        Rotary[i].PositionLabels = "0, 1, 2, 3, 4";
        Rotary[i].Position = i == 3 ? 7 : 2;
    }
    Rotary[1].Enabled = false;
    RotaryCaption[1].Enabled = false;
    Rotary[2].UserMove(3);
    for (int i : {1, 3}) Toggle[i].Active = Switch[i].Active = true;
    for (int i : {2, 3}) {
        TwoStateCaption[i].Enabled = false;
        Toggle[i].Enabled = Switch[i].Enabled = false;
    }
    Toggle[4].UserClick();
    Switch[4].UserClick();
}

void FrmControls::setDisplays() {
    for (int i : {1, 3}) SquareLamp[i].Active = RoundLamp[i].Active = true;
    for (int i : {2, 3}) {
        LampCaption[i].Enabled = false;
        SquareLamp[i].Enabled = RoundLamp[i].Enabled = false;
    }
    for (int i : {0, 2}) DrawnLamp[i].Active = true;
    for (int i = 0; i < Segments.size(); ++i) {
        Segments[i].PositionMax = 10;
        Segments[i].Position = i == 2 ? 14 : 6;
        Number[i].decimals = 1;
        Number[i].Value = i == 2 ? 12345 : -8.5 + 100 * i;
        Clock[i].Minutes = i == 2 ? ClockDisplay::NoTime : 9 * 60 + 41;
        Gauge[i].Value = i == 2 ? 140 : 92;
    }
    GaugeCaption[1].Enabled = false;
    Segments[1].Enabled = Number[1].Enabled = Clock[1].Enabled = Gauge[1].Enabled = false;
    Progress[0].Max = Progress[1].Max = 61;
    Progress[0].Value = 30;
    Progress[1].Value = 80;
}

void FrmControls::setTexts() {
    for (int i = 0; i < Text.size(); ++i) Text[i].Text = "12345";
    TextCaption[1].Enabled = false;
    Text[1].Enabled = false;
    Text[2].UserEnter();
    Command[1].Enabled = false;
    Words[0].Enabled = false;
    Words[1].ForeColor = Red;
    Words[2].ForeColor = Green;
    DrawnValue.Caption = "92.5";
    Table.ColumnHeads = {"nr.", "data", "ora", "descrizione"};
    Table.Rows = {{"1", "14/03/2024", "09:41", "macchina bloccata"},
                  {"2", "13/03/2024", "18:05", "mancanza acqua"},
                  {"3", "00/00/00", "00:00", "timeout motore settore 14"}};
}

void FrmControls::fillChart() {
    constexpr double FourSeconds = 4.0 / (24 * 60 * 60);
    constexpr int Samples = 400;
    Chart.Title = "Temperatures";
    Chart.setChannelName(0, "boiler");
    Chart.setChannelName(1, "tank");
    Chart.beginUpdate();
    for (int i = 0; i < Samples; ++i) {
        Chart.addTime(i * FourSeconds);
        Chart.addSample(0, i, std::round(92 + 4 * std::sin(i / 25.0)));
        if (i < 300 || i > 330) Chart.addSample(1, i, 12 - i / 100.0);
    }
    Chart.endUpdate();
}

}  // namespace kestrel

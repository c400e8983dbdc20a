// Every kind of control in every state: on, off, disabled, waiting for the board, out of range.
// For whoever adds a page or a control, and for the tests of the views; it talks to no board.
#pragma once

#include "link/page.h"
#include "platform/displays.h"
#include "platform/switches.h"

namespace kestrel {

class FrmControls : public Page {
  public:
    FrmControls();

    Frame BarFrame, StepFrame, TwoStateFrame, LampFrame, GaugeFrame, TextFrame, AbsentFrame, ListFrame, ChartFrame,
        PictureFrame;

    ControlArray<Label, 5> BarCaption;
    ControlArray<ScrollBar, 5> Bar;  ///< plain, disabled, waiting, value out of range, raw amounts
    ControlArray<Label, 5> BarValue;

    ControlArray<Label, 6> SliderCaption;
    ControlArray<SliderSwitch, 6> Slider;  ///< two labels, long labels, sixteen, disabled, waiting, out of range
    ControlArray<Label, 4> RotaryCaption;
    ControlArray<RotarySwitch, 4> Rotary;  ///< plain, disabled, waiting, out of range

    ControlArray<Label, 5> TwoStateCaption;
    ControlArray<ToggleSwitch, 5> Toggle;  ///< off, on, disabled off, disabled on, waiting
    ControlArray<LedSwitch, 5> Switch;     ///< the same
    ControlArray<Label, 4> LampCaption;
    ControlArray<Led, 4> SquareLamp;  ///< off, on, disabled off, disabled on
    ControlArray<Led, 4> RoundLamp;   ///< the same

    ControlArray<Label, 3> GaugeCaption;
    ControlArray<LedBar, 3> Segments;       ///< plain, disabled, out of range
    ControlArray<SevenSegment, 3> Number;   ///< the same
    ControlArray<ClockDisplay, 3> Clock;    ///< a time, disabled, no time
    ControlArray<Thermometer, 3> Gauge;     ///< plain, disabled, out of range
    ControlArray<ProgressBar, 2> Progress;  ///< half way, full

    ControlArray<Label, 4> TextCaption;
    ControlArray<TextBox, 3> Text;           ///< plain, disabled, waiting
    ControlArray<CommandButton, 2> Command;  ///< plain, disabled
    int clicks = 0;                          ///< on buttons and on what can be clicked besides
    ControlArray<Label, 4> Words;            ///< disabled, red, green, one that can be clicked

    /// What stands in a disabled frame.
    Label AbsentCaption, AbsentValue;
    ScrollBar AbsentBar;
    SliderSwitch AbsentSlider;
    ToggleSwitch AbsentToggle;

    ListView Table;
    StripChart Chart;
    Picture Drawing{"controls"};
    ControlArray<Led, 4> DrawnLamp;  ///< on the drawing: two round, two square
    Label DrawnValue;                ///< on the drawing
    Label DrawnKey;                  ///< a zone of the drawing that can be clicked

    Layout Arrange() override;
    void Form_Load() override;
    void SLabel_Change(int /*n*/, ParamValue /*value*/) override {}

  private:
    void setCaptions();
    void setBars();
    void setSwitches();
    void setDisplays();
    void setTexts();
    void fillChart();
};

}  // namespace kestrel

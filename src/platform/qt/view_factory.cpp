// Makes the view that fits a control.
// See view_factory.h.
#include "platform/qt/view_factory.h"

#include "platform/qt/bar_view.h"
#include "platform/qt/button_view.h"
#include "platform/qt/canvas_view.h"
#include "platform/qt/group_view.h"
#include "platform/qt/label_view.h"
#include "platform/qt/lamp_view.h"
#include "platform/qt/led_bar_view.h"
#include "platform/qt/list_view.h"
#include "platform/qt/progress_view.h"
#include "platform/qt/rotary_view.h"
#include "platform/qt/seven_segment_view.h"
#include "platform/qt/slider_view.h"
#include "platform/qt/strip_chart_view.h"
#include "platform/qt/text_box_view.h"
#include "platform/qt/thermometer_view.h"
#include "platform/qt/two_state_view.h"
#include "platform/trouble.h"

namespace kestrel::qt {

namespace {

using Maker = ViewBase* (*)(Control&);

template <class Model, class Widget>
ViewBase* make(Control& control) {
    auto* model = dynamic_cast<Model*>(&control);
    return model ? new Widget(*model) : nullptr;
}

constexpr Maker Kinds[] = {
    make<Label, LabelView>,
    make<ScrollBar, BarView>,
    make<Frame, GroupView>,
    make<CommandButton, ButtonView>,
    make<TextBox, TextBoxView>,
    make<ListView, ListTableView>,
    make<ProgressBar, ProgressView>,
    make<Picture, CanvasView>,
    make<SliderSwitch, SliderSwitchView>,
    make<RotarySwitch, RotarySwitchView>,
    make<LedSwitch, LedSwitchView>,  // before the toggle that it is too
    make<ToggleSwitch, ToggleView>,
    make<Led, LampView>,
    make<LedBar, LedBarView>,
    make<SevenSegment, SevenSegmentView>,
    make<ClockDisplay, ClockView>,
    make<Thermometer, ThermometerView>,
    make<StripChart, StripChartView>,
};

}  // namespace

ViewBase* makeView(Control& control) {
    for (const Maker maker : Kinds) {
        if (ViewBase* view = maker(control)) {
            view->controlChanged();
            return view;
        }
    }
    throw ProgrammingError("No view stands for this kind of control");
}

}  // namespace kestrel::qt

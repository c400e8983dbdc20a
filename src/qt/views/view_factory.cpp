// Makes the view that fits a control.
#include "qt/views/view_factory.h"

#include "platform/errors.h"
#include "qt/views/bar_view.h"
#include "qt/views/button_view.h"
#include "qt/views/canvas_view.h"
#include "qt/views/field_view.h"
#include "qt/views/folding_view.h"
#include "qt/views/group_view.h"
#include "qt/views/label_view.h"
#include "qt/views/lamp_view.h"
#include "qt/views/led_bar_view.h"
#include "qt/views/list_view.h"
#include "qt/views/progress_view.h"
#include "qt/views/seven_segment_view.h"
#include "qt/views/stepped_view.h"
#include "qt/views/strip_chart_view.h"
#include "qt/views/tally_view.h"
#include "qt/views/text_box_view.h"
#include "qt/views/thermometer_view.h"
#include "qt/views/time_line_view.h"
#include "qt/views/two_state_view.h"

namespace kestrel::qt {

namespace {

using Maker = ViewBase* (*)(Control&);

template <class Model, class Widget>
ViewBase* make(Control& control) {
    auto* model = dynamic_cast<Model*>(&control);
    return model ? new Widget(*model) : nullptr;
}

/// The figure of a bar is where the bar's value is entered.
ViewBase* makeLabel(Control& control) {
    auto* label = dynamic_cast<Label*>(&control);
    if (!label) return nullptr;
    return label->bar() ? static_cast<ViewBase*>(new FieldView(*label)) : new LabelView(*label);
}

constexpr Maker Kinds[] = {
    make<Tally, TallyView>,  // before the label that it is too
    makeLabel,
    make<ScrollBar, BarView>,
    make<FoldingFrame, FoldingView>,  // before the frame that it is too
    make<Frame, GroupView>,
    make<CommandButton, ButtonView>,
    make<TextBox, TextBoxView>,
    make<ListView, ListTableView>,
    make<ProgressBar, ProgressView>,
    make<Picture, CanvasView>,
    make<SteppedSwitch, SteppedView>,
    make<RevealSwitch, RevealView>,
    make<LedSwitch, LedSwitchView>,  // before the toggle that it is too
    make<ToggleSwitch, ToggleView>,
    make<Led, LampView>,
    make<LedBar, LedBarView>,
    make<SevenSegment, SevenSegmentView>,
    make<ClockDisplay, ClockView>,
    make<Thermometer, ThermometerView>,
    make<StripChart, StripChartView>,
    make<TimeLine, TimeLineView>,
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

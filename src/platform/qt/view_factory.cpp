// Makes the view that fits a control.
// See view_factory.h.
#include "platform/qt/view_factory.h"

#include "platform/qt/bar_view.h"
#include "platform/qt/button_view.h"
#include "platform/qt/group_view.h"
#include "platform/qt/label_view.h"
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

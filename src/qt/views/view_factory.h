// Makes the view that fits a control.
// A kind of control that is added takes one line here.
#pragma once

#include "qt/views/view.h"

namespace kestrel::qt {

/// A new widget that shows the control. A kind without a view is a programming error.
ViewBase* makeView(Control& control);

}  // namespace kestrel::qt

// Where the focus goes on a page: to a control that was looked for, or from group to group.
#pragma once

#include <QWidget>

namespace kestrel {
class Control;
}

namespace kestrel::qt {

/// Scrolls to the control, or to the field in which it is entered, and puts the focus there: where it is locked, such
/// as while its page is being read, as soon as it is not.
void focusControl(QWidget& page, const Control& control);

/// Puts the focus on the first control of the next group that has one to be worked, or of the one before; after the
/// last comes the first.
void focusNextGroup(QWidget& page, bool forward);

}  // namespace kestrel::qt

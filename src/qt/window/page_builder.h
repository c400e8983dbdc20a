// Builds the widgets of a layout tree, with a view of each of its controls.
// What stands side by side wraps where the window is too narrow; grids below one another have their columns in line.
#pragma once

#include <QWidget>
#include <vector>

#include "platform/layout.h"

namespace kestrel::qt {

class FieldView;
class ViewBase;

struct BuiltLayout {
    QWidget* root = nullptr;
    bool growsDown = false;              ///< it has a use for more height than it needs
    std::vector<ViewBase*> views;        ///< in reading order
    std::vector<FieldView*> fieldsDown;  ///< those of grids, column by column
};

/// Run-time errors of the views pass through.
BuiltLayout buildLayout(const Layout& layout);

/// The step between what stands beside or below one another, and from the edge of the page.
inline constexpr int LayoutSpacing = 8;

}  // namespace kestrel::qt

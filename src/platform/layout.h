// How a page says where its controls stand: a small tree of rows, columns, grids, groups and canvases.
// It is a description alone; the view turns any such tree into widgets.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "platform/basic_controls.h"

namespace kestrel {

class Layout {
  public:
    enum class Kind { Control, Row, Column, Grid, Group, Target, Folding, Canvas, Gap };

    Layout(Control& single) : kind(Kind::Control), control(&single) {}  // NOLINT: a control is a layout
    explicit Layout(Kind layoutKind) : kind(layoutKind) {}
    Layout(Kind layoutKind, std::vector<Layout> contents) : kind(layoutKind), children(std::move(contents)) {}

    Kind kind;
    Control* control = nullptr;       ///< of a Control; the frame of a Group; the picture of a Canvas
    std::vector<Layout> children;     ///< of a Grid: row by row
    int columns = 0;                  ///< of a Grid
    std::vector<std::string> places;  ///< of a Canvas: the drawing's element that each child stands on
};

struct Row : Layout {
    Row(std::initializer_list<Layout> contents) : Layout(Kind::Row, contents) {}
};

struct Column : Layout {
    Column(std::initializer_list<Layout> contents) : Layout(Kind::Column, contents) {}
};

/// A row that is pressed as a whole: a click anywhere in it is one on the switch that stands in it.
struct Target : Layout {
    Target(std::initializer_list<Layout> contents) : Layout(Kind::Target, contents) {}
};

/// Groups of folding frames below one another, those in use first.
struct Folding : Layout {
    Folding(std::initializer_list<Layout> contents) : Layout(Kind::Folding, contents) {}
};

/// A titled frame round what stands in it.
inline Layout Group(Frame& frame, Layout contents) {
    Layout group(Layout::Kind::Group, {std::move(contents)});
    group.control = &frame;
    return group;
}

/// Free space that takes up what its neighbours leave.
inline Layout Gap() { return Layout(Layout::Kind::Gap); }

inline Layout Grid(int columns, std::vector<Layout> cells) {
    Layout grid(Layout::Kind::Grid, std::move(cells));
    grid.columns = columns;
    return grid;
}

/// One row for each of these indexes, with the element of that index of each control array beside one another.
template <class... Arrays>
Layout Rows(const std::vector<int>& indexes, Arrays&... arrays) {
    std::vector<Layout> cells;
    for (const int index : indexes) (cells.emplace_back(arrays[index]), ...);
    return Grid(static_cast<int>(sizeof...(Arrays)), std::move(cells));
}

/// The numbers from first to last, for Rows.
std::vector<int> Indexes(int first, int last);

/// Controls on named places of a picture.
Layout Canvas(Picture& picture, const std::vector<std::pair<Control*, std::string>>& placed);

/// Tells every control of the tree which frame stands round it and which caption names it, unless the page has named it
/// already: the caption label before it in its row, or before that row, with the unit label behind it where there is
/// one; and which captions stand above its column, in a grid whose first row is nothing but captions. The value label
/// right behind a bar is its figure, or else the one right before it.
void settleLayout(const Layout& layout);
/// Calls `visit` with every control of the tree.
void eachControl(const Layout& layout, const std::function<void(Control&)>& visit);

}  // namespace kestrel

// Builds the widgets of a layout tree.
#include "qt/window/page_builder.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <map>
#include <memory>

#include "qt/views/aligned_grid.h"
#include "qt/views/canvas_view.h"
#include "qt/views/field_view.h"
#include "qt/views/folding_view.h"
#include "qt/views/group_view.h"
#include "qt/views/label_view.h"
#include "qt/views/target_row.h"
#include "qt/views/view_factory.h"
#include "qt/views/wrap_layout.h"

namespace kestrel::qt {

namespace {

constexpr int Spacing = LayoutSpacing;
constexpr int FieldSpacing = 2 * GridStep;  ///< between fields whose bar stands below their caption and figure
constexpr int TargetMargin = GridStep / 2;
constexpr int ListSpacing = 3 * GridStep;  ///< so that a figure is not read with the caption to its right

bool grows(const QWidget& widget, Qt::Orientation direction) {
    if (const QLayout* layout = widget.layout()) return layout->expandingDirections() & direction;
    return widget.sizePolicy().expandingDirections() & direction;
}

/// Panels fill the width, so that their edges are in line.
bool holdsGroups(const QWidget& widget) {
    const auto children = widget.findChildren<QWidget*>();
    return std::any_of(children.begin(), children.end(),
                       [](const QWidget* child) { return dynamic_cast<const GroupView*>(child) != nullptr; });
}

/// How a child stands in a cell that is larger than it.
Qt::Alignment standing(const QWidget& widget, bool inRow) {
    Qt::Alignment result;
    const bool group = dynamic_cast<const GroupView*>(&widget) != nullptr;
    if (!grows(widget, Qt::Vertical) && !(group && inRow)) result |= widget.layout() ? Qt::AlignTop : Qt::AlignVCenter;
    const auto* label = dynamic_cast<const LabelView*>(&widget);
    const bool isField = dynamic_cast<const FieldView*>(&widget) != nullptr;
    if (label && label->isFigure())
        result |= Qt::AlignRight;
    else if (!group && !isField && !dynamic_cast<const TargetRow*>(&widget) && !holdsGroups(widget) &&
             !grows(widget, Qt::Horizontal))
        result |= Qt::AlignLeft;
    return result;
}

bool isGrid(const Layout& layout) { return layout.kind == Layout::Kind::Grid; }
bool isColumn(const Layout& layout) { return layout.kind == Layout::Kind::Column; }
bool isGap(const Layout& layout) {
    // A bar without a trough is its field alone.
    const auto* bar = dynamic_cast<const ScrollBar*>(layout.control);
    return layout.kind == Layout::Kind::Gap || (bar && !bar->hasTrough() && bar->figure());
}
bool isHeading(const Layout& layout) {
    const auto* label = dynamic_cast<const Label*>(layout.control);
    return label && label->role == Label::Role::Heading;
}
/// Rows that are pressed as a whole have a margin of their own.
bool isTargetList(const Layout& layout) {
    return isGrid(layout) && layout.children.front().kind == Layout::Kind::Target;
}
bool isList(const Layout& layout) { return isGrid(layout) || isColumn(layout); }
bool isCell(const Layout& layout) { return layout.kind == Layout::Kind::Control || layout.kind == Layout::Kind::Gap; }

bool allOf(const Layout& layout, bool (*is)(const Layout&)) {
    return std::all_of(layout.children.begin(), layout.children.end(), is);
}

/// A control, or a row of controls.
bool isLine(const Layout& layout) {
    return isCell(layout) || (layout.kind == Layout::Kind::Row && allOf(layout, isCell));
}

using GridStacks = std::map<int, std::shared_ptr<GridStack>>;

class Builder {
  public:
    /// `stacks`: the grids of the column that the layout stands in, by their number of columns.
    QWidget* build(const Layout& layout, GridStacks& stacks) {
        switch (layout.kind) {
            case Layout::Kind::Control:
                return &viewOf(*layout.control).widget();
            case Layout::Kind::Row:
                return isLine(layout) ? line(layout, stacks) : blocks(layout);
            case Layout::Kind::Column:
                return column(layout, stacks);
            case Layout::Kind::Grid:
                return grid(layout, stacks);
            case Layout::Kind::Group:
                return group(layout, stacks);
            case Layout::Kind::Target:
                return target(layout, stacks);
            case Layout::Kind::Folding:
                return folding(layout, stacks);
            case Layout::Kind::Canvas:
                return canvas(layout);
            case Layout::Kind::Gap:
                return new QWidget;
        }
        return nullptr;
    }
    std::vector<ViewBase*> views;
    std::vector<FieldView*> fieldsDown;  ///< the fields of grids, column by column

  private:
    ViewBase& viewOf(Control& control) {
        views.push_back(makeView(control));
        return *views.back();
    }

    /// Blocks side by side: where the window is too narrow for them they stand below one another.
    QWidget* blocks(const Layout& layout) {
        auto* widget = new QWidget;
        const bool targets = isTargetList(layout.children.front());
        auto* lines = new WrapLayout(widget, targets ? FieldSpacing : allOf(layout, isList) ? ListSpacing : Spacing);
        for (const Layout& child : layout.children) {
            if (child.kind == Layout::Kind::Gap) lines->addStretch();
            if (isGap(child)) continue;
            GridStacks own;  // what stands side by side is not in line with what stands above
            QWidget* cell = build(child, own);
            lines->add(cell, standing(*cell, true));
        }
        return widget;
    }

    QWidget* line(const Layout& layout, GridStacks& stacks) {
        auto* widget = new QWidget;
        auto* cells = new QHBoxLayout(widget);
        cells->setContentsMargins(0, 0, 0, 0);
        cells->setSpacing(Spacing);
        addAll(layout, *cells, stacks, true);
        return widget;
    }

    QWidget* column(const Layout& layout, GridStacks& stacks) {
        auto* widget = new QWidget;
        auto* lines = new QVBoxLayout(widget);
        lines->setContentsMargins(0, 0, 0, 0);
        // Lines below one another stand as close as the rows of a grid, and so does what a heading names.
        lines->setSpacing(allOf(layout, isLine) || isHeading(layout.children.front()) ? 0 : Spacing);
        addAll(layout, *lines, stacks, false);
        return widget;
    }

    void addAll(const Layout& layout, QBoxLayout& box, GridStacks& stacks, bool inRow) {
        for (const Layout& child : layout.children) {
            if (child.kind == Layout::Kind::Gap) box.addStretch(1);
            if (isGap(child)) continue;
            QWidget* cell = build(child, stacks);
            box.addWidget(cell, 0, standing(*cell, inRow));
        }
    }

    QWidget* grid(const Layout& layout, GridStacks& stacks) {
        const int columns = std::max(1, layout.columns);
        auto& stack = stacks[columns];
        if (!stack) stack = std::make_shared<GridStack>();
        auto* widget = new QWidget;
        auto* cells = new AlignedGrid(widget, stack);
        cells->setContentsMargins(0, 0, 0, 0);
        const auto any = [&layout](bool (*is)(const Layout&)) {
            return std::any_of(layout.children.begin(), layout.children.end(), is);
        };
        const bool composed = any(isColumn);
        cells->setHorizontalSpacing(composed || any(isGrid) ? FieldSpacing : Spacing);
        cells->setVerticalSpacing(composed ? Spacing : 0);
        std::vector<std::vector<FieldView*>> fieldsOf(static_cast<std::size_t>(columns));
        for (std::size_t i = 0; i < layout.children.size(); ++i) {
            if (isGap(layout.children[i])) continue;
            const int column = static_cast<int>(i) % columns;
            GridStacks own;
            const std::size_t first = views.size();
            QWidget* cell = build(layout.children[i], own);
            auto& fields = fieldsOf[static_cast<std::size_t>(column)];
            for (std::size_t at = first; at < views.size(); ++at)
                if (auto* const field = dynamic_cast<FieldView*>(views[at])) fields.push_back(field);
            cells->addWidget(cell, static_cast<int>(i) / columns, column, standing(*cell, true));
            if (grows(*cell, Qt::Horizontal)) cells->setColumnStretch(column, 1000);
        }
        for (const auto& fields : fieldsOf) fieldsDown.insert(fieldsDown.end(), fields.begin(), fields.end());
        // What the cells have no use for stays at the end of the rows.
        cells->setColumnStretch(columns, 1);
        return widget;
    }

    QWidget* group(const Layout& layout, GridStacks& stacks) {
        auto& view = static_cast<GroupView&>(viewOf(*layout.control));
        QWidget* inside = build(layout.children.front(), stacks);
        view.setContents(inside, grows(*inside, Qt::Vertical));
        return &view;
    }

    QWidget* folding(const Layout& layout, GridStacks& stacks) {
        auto* column = new FoldingColumn(Spacing);
        for (const Layout& child : layout.children) column->add(dynamic_cast<FoldingView&>(*build(child, stacks)));
        return column;
    }

    QWidget* target(const Layout& layout, GridStacks& stacks) {
        auto* row = new TargetRow;
        auto* cells = new QHBoxLayout(row);
        cells->setContentsMargins(TargetMargin, 0, TargetMargin, 0);
        cells->setSpacing(Spacing);
        for (const Layout& child : layout.children) {
            QWidget* cell = build(child, stacks);
            cells->addWidget(cell, 0, standing(*cell, true));
            if (views.back()->canPress()) row->presses(*views.back());
        }
        cells->addStretch(1);
        return row;
    }

    QWidget* canvas(const Layout& layout) {
        GridStacks none;
        auto& view = static_cast<CanvasView&>(viewOf(*layout.control));
        for (std::size_t i = 0; i < layout.children.size(); ++i)
            view.place(build(layout.children[i], none), toQt(layout.places[i]));
        return &view;
    }
};

}  // namespace

BuiltLayout buildLayout(const Layout& layout) {
    Builder builder;
    GridStacks stacks;
    QWidget* root = builder.build(layout, stacks);
    return {root, grows(*root, Qt::Vertical), std::move(builder.views), std::move(builder.fieldsDown)};
}

}  // namespace kestrel::qt

// How a page says where its controls stand.
#include "platform/layout.h"

namespace kestrel {

namespace {

const Label* asLabel(const Layout& cell, Label::Role role) {
    const auto* label = cell.kind == Layout::Kind::Control ? dynamic_cast<const Label*>(cell.control) : nullptr;
    return label && label->role == role ? label : nullptr;
}

void nameCells(const Layout& layout, const Label* caption);

/// Names the cells from first to last by the caption before each and the unit behind it; a row, column or grid among
/// them passes the caption on to those of its cells that have none of their own.
void nameRow(const Layout& layout, std::size_t first, std::size_t last, const Label* caption) {
    std::vector<Control*> withoutUnit;
    for (std::size_t i = first; i < last; ++i) {
        const Layout& cell = layout.children[i];
        if (const Label* found = asLabel(cell, Label::Role::Caption)) {
            caption = found;
            withoutUnit.clear();
        } else if (const Label* unit = asLabel(cell, Label::Role::Unit)) {
            for (Control* control : withoutUnit) control->measuredIn(unit);
            withoutUnit.clear();
        } else if (cell.kind != Layout::Kind::Control) {
            nameCells(cell, caption);
        } else if (caption) {
            if (!cell.control->isNamed()) cell.control->namedBy(caption);
            withoutUnit.push_back(cell.control);
        }
    }
}

/// The captions of a cell that holds nothing else; nothing of a cell that does.
std::vector<const Label*> headsIn(const Layout& cell) {
    std::vector<const Label*> heads;
    bool onlyHeads = cell.kind != Layout::Kind::Group && cell.kind != Layout::Kind::Canvas;
    eachControl(cell, [&](Control& control) {
        const auto* label = dynamic_cast<const Label*>(&control);
        if (label && label->role == Label::Role::Caption && !label->isClickable())
            heads.push_back(label);
        else
            onlyHeads = false;
    });
    return onlyHeads ? heads : std::vector<const Label*>();
}

/// A first row of captions heads the columns below; a column without one belongs to that before it.
void headColumns(const Layout& grid, std::size_t columns) {
    std::vector<std::vector<const Label*>> heads;
    for (std::size_t column = 0; column < std::min(columns, grid.children.size()); ++column) {
        const Layout& cell = grid.children[column];
        heads.push_back(headsIn(cell));
        if (heads.back().empty() && cell.kind != Layout::Kind::Gap) return;
        if (heads.back().empty() && column > 0) heads.back() = heads[column - 1];
    }
    for (std::size_t i = columns; i < grid.children.size(); ++i)
        eachControl(grid.children[i], [&](Control& control) { control.headedBy(heads[i % columns]); });
}

void nameCells(const Layout& layout, const Label* caption) {
    if (layout.kind == Layout::Kind::Group) nameCells(layout.children.front(), nullptr);
    if (layout.kind == Layout::Kind::Folding)
        for (const Layout& child : layout.children) nameCells(child, nullptr);
    if (layout.kind == Layout::Kind::Row || layout.kind == Layout::Kind::Column || layout.kind == Layout::Kind::Target)
        nameRow(layout, 0, layout.children.size(), caption);
    if (layout.kind == Layout::Kind::Grid && layout.columns > 0) {
        const auto columns = static_cast<std::size_t>(layout.columns);
        headColumns(layout, columns);
        for (std::size_t row = 0; row < layout.children.size(); row += columns)
            nameRow(layout, row, std::min(row + columns, layout.children.size()), caption);
    }
}

void standAll(const Layout& layout, const Frame* frame) {
    if (layout.control) layout.control->standIn(frame);
    const Frame* inner = layout.kind == Layout::Kind::Group ? static_cast<const Frame*>(layout.control) : frame;
    for (const Layout& child : layout.children) standAll(child, inner);
}

void giveFigures(const Layout& layout) {
    std::vector<Control*> all;
    eachControl(layout, [&all](Control& control) { all.push_back(&control); });
    const auto figureAt = [&all](std::size_t at) {
        auto* const label = at < all.size() ? dynamic_cast<Label*>(all[at]) : nullptr;
        return label && label->role == Label::Role::Value && !label->bar() ? label : nullptr;
    };
    for (std::size_t i = 0; i < all.size(); ++i) {
        auto* const bar = dynamic_cast<ScrollBar*>(all[i]);
        if (!bar || bar->figure()) continue;
        if (Label* const behind = figureAt(i + 1))
            behind->figureOf(bar);
        else if (Label* const before = figureAt(i - 1))
            before->figureOf(bar);
    }
}

}  // namespace

std::vector<int> Indexes(int first, int last) {
    std::vector<int> result;
    for (int i = first; i <= last; ++i) result.push_back(i);
    return result;
}

Layout Canvas(Picture& picture, const std::vector<std::pair<Control*, std::string>>& placed) {
    Layout canvas(Layout::Kind::Canvas);
    canvas.control = &picture;
    for (const auto& [control, place] : placed) {
        canvas.children.emplace_back(*control);
        canvas.places.push_back(place);
    }
    return canvas;
}

void settleLayout(const Layout& layout) {
    standAll(layout, nullptr);
    nameCells(layout, nullptr);
    giveFigures(layout);
}

void eachControl(const Layout& layout, const std::function<void(Control&)>& visit) {
    if (layout.control) visit(*layout.control);
    for (const Layout& child : layout.children) eachControl(child, visit);
}

}  // namespace kestrel

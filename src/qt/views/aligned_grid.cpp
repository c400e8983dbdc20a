// Grids that stand below one another with their columns in line.
#include "qt/views/aligned_grid.h"

#include <algorithm>
#include <utility>

namespace kestrel::qt {

void GridStack::remove(const AlignedGrid& grid) {
    grids_.erase(std::remove(grids_.begin(), grids_.end(), &grid), grids_.end());
}

void GridStack::settle() {
    if (settled_ || settling_) return;
    settling_ = true;
    std::vector<int> widest;
    for (const AlignedGrid* grid : grids_) {
        const std::vector<int> needed = grid->neededWidths();
        widest.resize(std::max(widest.size(), needed.size()));
        for (std::size_t i = 0; i < needed.size(); ++i) widest[i] = std::max(widest[i], needed[i]);
    }
    for (AlignedGrid* grid : grids_) grid->setLeastWidths(widest);
    settled_ = true;
    settling_ = false;
}

AlignedGrid::AlignedGrid(QWidget* widget, std::shared_ptr<GridStack> stack)
    : QGridLayout(widget), stack_(std::move(stack)) {
    stack_->add(*this);
}

AlignedGrid::~AlignedGrid() { stack_->remove(*this); }

std::vector<int> AlignedGrid::neededWidths() const {
    std::vector<int> widths(static_cast<std::size_t>(columnCount()));
    for (int i = 0; i < count(); ++i) {
        int row = 0, column = 0, rows = 0, columns = 0;
        getItemPosition(i, &row, &column, &rows, &columns);
        int& width = widths[static_cast<std::size_t>(column)];
        if (columnStretch(column) == 0) width = std::max(width, itemAt(i)->minimumSize().width());
    }
    return widths;
}

void AlignedGrid::setLeastWidths(const std::vector<int>& widths) {
    for (int column = 0; column < columnCount(); ++column) {
        const int width = widths[static_cast<std::size_t>(column)];
        if (columnStretch(column) == 0 && columnMinimumWidth(column) != width) setColumnMinimumWidth(column, width);
    }
}

QSize AlignedGrid::sizeHint() const {
    stack_->settle();
    return QGridLayout::sizeHint();
}

QSize AlignedGrid::minimumSize() const {
    stack_->settle();
    return QGridLayout::minimumSize();
}

void AlignedGrid::setGeometry(const QRect& place) {
    stack_->settle();
    QGridLayout::setGeometry(place);
}

void AlignedGrid::invalidate() {
    stack_->unsettle();
    QGridLayout::invalidate();
}

}  // namespace kestrel::qt

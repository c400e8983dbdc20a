// Grids that stand below one another, in different groups, with their columns in line.
// Columns whose cells stretch are left alone: they take what the others leave.
#pragma once

#include <QGridLayout>
#include <memory>
#include <vector>

namespace kestrel::qt {

class AlignedGrid;

/// Grids of as many columns that keep them in line. Lives as long as one of them.
class GridStack {
  public:
    void add(AlignedGrid& grid) { grids_.push_back(&grid); }
    void remove(const AlignedGrid& grid);
    /// A cell has changed its size.
    void unsettle() { settled_ = false; }
    /// Gives all grids the column widths that the widest of them needs.
    void settle();

  private:
    std::vector<AlignedGrid*> grids_;
    bool settled_ = false;
    bool settling_ = false;
};

class AlignedGrid : public QGridLayout {
  public:
    AlignedGrid(QWidget* widget, std::shared_ptr<GridStack> stack);
    ~AlignedGrid() override;

    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& place) override;
    void invalidate() override;

    /// Widths that the grid's own cells need; 0 for a column that stretches.
    std::vector<int> neededWidths() const;
    void setLeastWidths(const std::vector<int>& widths);

  private:
    std::shared_ptr<GridStack> stack_;
};

}  // namespace kestrel::qt

// What stands side by side where there is room for it, and below one another where there is not.
// A line is broken before what does not fit on it any more; what stretches shares what is left of its line.
#pragma once

#include <QLayout>
#include <vector>

namespace kestrel::qt {

class WrapLayout : public QLayout {
  public:
    WrapLayout(QWidget* widget, int spacing);
    ~WrapLayout() override;

    void addItem(QLayoutItem* item) override { items_.push_back(item); }
    /// How the widget stands in a place that is larger than it.
    void add(QWidget* widget, Qt::Alignment alignment);
    /// What stands behind it goes to the right end of the line.
    void addStretch();

    int count() const override { return static_cast<int>(items_.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return heightFor(width, preferredHeight); }
    int minimumHeightForWidth(int width) const override { return heightFor(width, leastHeight); }
    /// All on one line.
    QSize sizeHint() const override;
    /// One below the other, as narrow as the widest of them; of the height of one line, which a wide place needs.
    QSize minimumSize() const override;
    void setGeometry(const QRect& place) override;

  private:
    using Line = std::vector<QLayoutItem*>;
    std::vector<Line> linesFor(int width) const;
    using HeightOf = int (*)(const QLayoutItem& item, int width);
    static int preferredHeight(const QLayoutItem& item, int width);
    static int leastHeight(const QLayoutItem& item, int width);
    int heightFor(int width, HeightOf heightOf) const;
    /// Widths of the items of a line in a place of this width.
    std::vector<int> widthsIn(const Line& line, int width) const;
    static int highest(const Line& line, const std::vector<int>& widths, HeightOf heightOf);

    std::vector<QLayoutItem*> items_;
};

}  // namespace kestrel::qt

// What stands side by side where there is room for it.
#include "qt/views/wrap_layout.h"

#include <QWidget>
#include <algorithm>
#include <numeric>

namespace kestrel::qt {

namespace {

bool isGap(QLayoutItem& item) { return item.spacerItem() != nullptr; }
bool expands(const QLayoutItem* item) { return item->expandingDirections() & Qt::Horizontal; }
bool fills(const QLayoutItem* item) { return !(item->alignment() & Qt::AlignHorizontal_Mask); }

}  // namespace

WrapLayout::WrapLayout(QWidget* widget, int spacing) : QLayout(widget) {
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
}

WrapLayout::~WrapLayout() {
    for (QLayoutItem* item : items_) delete item;
}

void WrapLayout::add(QWidget* widget, Qt::Alignment alignment) {
    addChildWidget(widget);
    auto* item = new QWidgetItem(widget);
    item->setAlignment(alignment);
    addItem(item);
}

void WrapLayout::addStretch() { addItem(new QSpacerItem(0, 0, QSizePolicy::Expanding, QSizePolicy::Minimum)); }

QLayoutItem* WrapLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)] : nullptr;
}

QLayoutItem* WrapLayout::takeAt(int index) {
    QLayoutItem* item = itemAt(index);
    if (item) items_.erase(items_.begin() + index);
    return item;
}

Qt::Orientations WrapLayout::expandingDirections() const {
    Qt::Orientations all;
    for (const QLayoutItem* item : items_) all |= item->expandingDirections();
    return all;
}

std::vector<WrapLayout::Line> WrapLayout::linesFor(int width) const {
    std::vector<Line> lines;
    int left = 0;
    for (QLayoutItem* item : items_) {
        const int needed = item->minimumSize().width();
        if (lines.empty() || (left < needed && !isGap(*item))) {
            lines.emplace_back();
            left = width;
        }
        lines.back().push_back(item);
        left -= isGap(*item) ? 0 : needed + spacing();
    }
    return lines;
}

/// Each gets what it would like, or where that is too much, less by as much of it as the others give up of theirs; what
/// is left over goes to those that expand, or else to those that fill their place.
std::vector<int> WrapLayout::widthsIn(const Line& line, int width) const {
    const auto gaps = std::count_if(line.begin(), line.end(), [](QLayoutItem* item) { return isGap(*item); });
    const int room = width - spacing() * (static_cast<int>(line.size() - static_cast<std::size_t>(gaps)) - 1);
    std::vector<int> widths;
    for (const QLayoutItem* item : line) widths.push_back(item->sizeHint().expandedTo(item->minimumSize()).width());
    int rest = room - std::accumulate(widths.begin(), widths.end(), 0);
    int slack = 0;
    for (std::size_t i = 0; i < line.size(); ++i) slack += widths[i] - line[i]->minimumSize().width();
    for (std::size_t i = 0; i < line.size() && rest < 0 && slack > 0; ++i) {
        const int own = widths[i] - line[i]->minimumSize().width();
        const int given = std::min(own, -rest * own / slack);
        slack -= own;
        widths[i] -= given;
        rest += given;
    }
    const auto stretches = std::any_of(line.begin(), line.end(), expands) ? expands : fills;
    auto stretching = std::count_if(line.begin(), line.end(), stretches);
    for (std::size_t i = 0; i < line.size() && rest > 0 && stretching > 0; ++i) {
        if (!stretches(line[i])) continue;
        const int part = rest / static_cast<int>(stretching--);
        widths[i] += part;
        rest -= part;
    }
    return widths;
}

int WrapLayout::preferredHeight(const QLayoutItem& item, int width) {
    return item.hasHeightForWidth() ? item.heightForWidth(width) : item.sizeHint().height();
}

int WrapLayout::leastHeight(const QLayoutItem& item, int width) {
    return item.hasHeightForWidth() ? item.minimumHeightForWidth(width) : item.minimumSize().height();
}

int WrapLayout::highest(const Line& line, const std::vector<int>& widths, HeightOf heightOf) {
    int height = 0;
    for (std::size_t i = 0; i < line.size(); ++i) height = std::max(height, heightOf(*line[i], widths[i]));
    return height;
}

int WrapLayout::heightFor(int width, HeightOf heightOf) const {
    int height = -spacing();
    for (const Line& line : linesFor(width)) height += highest(line, widthsIn(line, width), heightOf) + spacing();
    return std::max(0, height);
}

QSize WrapLayout::sizeHint() const {
    QSize size(-spacing(), 0);
    for (QLayoutItem* item : items_) {
        if (isGap(*item)) continue;
        const QSize each = item->sizeHint().expandedTo(item->minimumSize());
        size = QSize(size.width() + each.width() + spacing(), std::max(size.height(), each.height()));
    }
    return size.expandedTo({0, 0});
}

QSize WrapLayout::minimumSize() const {
    QSize size;
    for (const QLayoutItem* item : items_) size = size.expandedTo(item->minimumSize());
    return size.expandedTo({0, 0});
}

void WrapLayout::setGeometry(const QRect& place) {
    QLayout::setGeometry(place);
    const std::vector<Line> lines = linesFor(place.width());
    int y = place.top();
    for (const Line& line : lines) {
        const std::vector<int> widths = widthsIn(line, place.width());
        // A single line has all the height; what grows in it takes that.
        const int height = lines.size() == 1 ? place.height() : highest(line, widths, preferredHeight);
        int x = place.left();
        for (std::size_t i = 0; i < line.size(); ++i) {
            line[i]->setGeometry(QRect(x, y, widths[i], height));
            x += widths[i] + (isGap(*line[i]) ? 0 : spacing());
        }
        y += height + spacing();
    }
}

}  // namespace kestrel::qt

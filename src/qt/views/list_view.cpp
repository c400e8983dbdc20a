// Shows a table of texts with column heads.
#include "qt/views/list_view.h"

#include <QHeaderView>
#include <algorithm>

namespace kestrel::qt {

namespace {

constexpr int RowsShown = 10;

QStringList texts(const std::vector<std::string>& row) {
    QStringList result;
    for (const std::string& text : row) result.append(toQt(text));
    return result;
}

}  // namespace

ListTableView::ListTableView(ListView& list) : View(list) {
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setColumnCount(0);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(false);
    setPolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ListTableView::showState() {
    const bool newHeads = heads_ != model().ColumnHeads.get();
    const bool newRows = rows_ != model().Rows.get();
    if (newHeads) {
        heads_ = model().ColumnHeads.get();
        setColumnCount(static_cast<int>(heads_.size()));
        setHeaderLabels(texts(heads_));
    }
    if (newRows) {
        rows_ = model().Rows.get();
        clear();
        for (const auto& row : rows_) {
            auto* item = new QTreeWidgetItem(this, texts(row));
            item->setSizeHint(0, QSize(0, textHeight(*this)));
        }
    }
    if (newHeads || newRows) fitColumns();
}

void ListTableView::fitColumns() {
    for (int column = 0; column + 1 < columnCount(); ++column) {
        resizeColumnToContents(column);
        header()->resizeSection(column, columnWidth(column) + GridStep);
    }
    fitLastColumn();
}

void ListTableView::fitLastColumn() {
    const int last = columnCount() - 1;
    if (last < 0) return;
    const int needed = std::max(sizeHintForColumn(last), header()->sectionSizeHint(last)) + GridStep;
    header()->resizeSection(last, std::max(needed, viewport()->width() - header()->sectionPosition(last)));
}

void ListTableView::resizeEvent(QResizeEvent* event) {
    View::resizeEvent(event);
    fitLastColumn();
}

void ListTableView::renamed() {
    if (const QString name = spokenName(); name != accessibleName()) setAccessibleName(name);
}

QSize ListTableView::sizeHint() const {
    const int line = textHeight(*this);
    return {line * 30, line * (RowsShown + 1) + GridStep};
}

QSize ListTableView::minimumSizeHint() const { return {textHeight(*this) * 12, textHeight(*this) * 5}; }

}  // namespace kestrel::qt

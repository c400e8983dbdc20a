// A page as a table for another program.
#include "qt/window/page_table.h"

#include <QStringList>
#include <QWidget>
#include <algorithm>
#include <vector>

#include "link/page.h"
#include "platform/names_on_page.h"
#include "qt/views/spoken_view.h"

namespace kestrel::qt {

namespace {

/// Nothing in it parts cells or rows.
QString cell(const QString& text) { return text.simplified(); }

void addList(QStringList& table, const ListView& list) {
    const auto addRow = [&table](const std::vector<std::string>& row) {
        QStringList cells;
        for (const std::string& text : row) cells += cell(toQt(text));
        table += cells.join(u'\t');
    };
    addRow(list.ColumnHeads);
    for (const auto& row : list.Rows.get()) addRow(row);
}

}  // namespace

QString tableOf(Page& page, const QWidget& shown) {
    std::vector<const ViewBase*> views;
    for (const QWidget* each : shown.findChildren<QWidget*>())
        if (const auto* view = dynamic_cast<const ViewBase*>(each); view && view->bound()) views.push_back(view);
    QStringList table{cell(toQt(page.Caption))};
    for (const NamedControl& each : NamedControls(page)) {
        const auto view = std::find_if(views.begin(), views.end(),
                                       [&each](const ViewBase* any) { return any->standsFor(*each.control); });
        if (view == views.end() || !each.control->Visible) continue;
        if (const auto* list = dynamic_cast<const ListView*>(each.control)) {
            addList(table, *list);
            continue;
        }
        const QString value = cell((*view)->spokenValue());
        if (!value.isEmpty()) table += cell(toQt(each.name)) + u'\t' + value;
    }
    return table.join(u'\n') + u'\n';
}

}  // namespace kestrel::qt

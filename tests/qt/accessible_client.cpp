// A client of the accessibility bus that asks anything of anything.
#include "accessible_client.h"

#include <QRect>
#include <limits>

namespace kestrel::qt::testing {

namespace {

constexpr std::size_t Memory = 400;  ///< of things seen, the oldest of which are long gone

}  // namespace

AccessibleClient::AccessibleClient(QObject& window, unsigned seed) : random_(seed), window_(window) {}

int AccessibleClient::index(int count) {
    switch (number(0, 9)) {
        case 0:
            return count + number(0, 3);
        case 1:
            return number(0, 1) == 0 ? std::numeric_limits<int>::max() : count + 1000;
        default:
            return number(0, std::max(count - 1, 0));
    }
}

QString AccessibleClient::anyText() {
    return QString(number(0, 12), QChar(u'0' + static_cast<char16_t>(number(0, 9))));
}

void AccessibleClient::keep(const QAccessibleInterface* found) {
    if (!found) return;
    const QAccessible::Id id = QAccessible::uniqueId(const_cast<QAccessibleInterface*>(found));
    if (known_.size() < Memory)
        known_.push_back(id);
    else
        known_[static_cast<std::size_t>(number(0, Memory - 1))] = id;
}

void AccessibleClient::askAnything() {
    if (known_.empty() || number(0, 50) == 0) keep(QAccessible::queryAccessibleInterface(&window_));
    QAccessibleInterface* asked = QAccessible::accessibleInterface(
        known_[static_cast<std::size_t>(number(0, static_cast<int>(known_.size()) - 1))]);
    if (!asked || !asked->isValid()) return;
    ++answered_;
    switch (number(0, 7)) {
        case 0:
        case 1:
            return askOfTree(*asked);
        case 2:
            return askOfItself(*asked);
        case 3:
            if (auto* text = asked->textInterface()) askOfText(*text);
            return;
        case 4:
            if (auto* text = asked->editableTextInterface()) edit(*text);
            return;
        case 5:
            if (auto* value = asked->valueInterface()) askOfValue(*value);
            return;
        case 6:
            // An entry of a menu would leave the program or begin a loop of its own.
            if (auto* action = asked->actionInterface(); action && asked->role() != QAccessible::MenuItem) act(*action);
            return;
        default:
            if (auto* table = asked->tableInterface()) askOfTable(*table);
            if (const auto* cell = asked->tableCellInterface()) askOfCell(*cell);
    }
}

void AccessibleClient::askOfTree(QAccessibleInterface& asked) {
    const int count = asked.childCount();
    QAccessibleInterface* child = asked.child(index(count));
    keep(child);
    if (child) asked.indexOfChild(child);
    const QRect place = asked.rect();
    keep(asked.childAt(place.x() + number(-5, place.width() + 5), place.y() + number(-5, place.height() + 5)));
    keep(asked.focusChild());
    keep(asked.parent());
    for (const auto& [other, kind] : asked.relations(QAccessible::AllRelations)) keep(other);
}

void AccessibleClient::askOfItself(const QAccessibleInterface& asked) {
    for (const auto kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help,
                            QAccessible::Accelerator, QAccessible::DebugDescription})
        static_cast<void>(asked.text(kind));
    static_cast<void>(asked.role());
    static_cast<void>(asked.state());
    static_cast<void>(asked.foregroundColor());
    static_cast<void>(asked.window());
}

void AccessibleClient::askOfText(QAccessibleTextInterface& asked) {
    const int count = asked.characterCount();
    const auto boundary = static_cast<QAccessible::TextBoundaryType>(number(0, QAccessible::NoBoundary));
    int from = index(count), to = index(count);
    static_cast<void>(asked.text(from, to));
    static_cast<void>(asked.characterRect(index(count)));
    static_cast<void>(asked.attributes(index(count), &from, &to));
    static_cast<void>(asked.textBeforeOffset(index(count), boundary, &from, &to));
    static_cast<void>(asked.textAtOffset(index(count), boundary, &from, &to));
    static_cast<void>(asked.textAfterOffset(index(count), boundary, &from, &to));
    asked.selection(index(asked.selectionCount()), &from, &to);
    switch (number(0, 4)) {
        case 0:
            return asked.setCursorPosition(index(count));
        case 1:
            return asked.addSelection(index(count), index(count));
        case 2:
            return asked.setSelection(index(1), index(count), index(count));
        case 3:
            return asked.removeSelection(index(1));
        default:
            return asked.scrollToSubstring(index(count), index(count));
    }
}

void AccessibleClient::edit(QAccessibleEditableTextInterface& asked) {
    const int at = number(0, 8);
    switch (number(0, 2)) {
        case 0:
            return asked.insertText(at, anyText());
        case 1:
            return asked.deleteText(at, at + number(0, 8));
        default:
            return asked.replaceText(at, at + number(0, 8), anyText());
    }
}

void AccessibleClient::askOfValue(QAccessibleValueInterface& asked) {
    static_cast<void>(asked.currentValue());
    static_cast<void>(asked.minimumValue());
    static_cast<void>(asked.maximumValue());
    static_cast<void>(asked.minimumStepSize());
    if (number(0, 1) == 0)
        asked.setCurrentValue(number(0, 3) == 0 ? std::numeric_limits<double>::max() : number(-9, 300));
}

void AccessibleClient::act(QAccessibleActionInterface& asked) {
    const QStringList names = asked.actionNames();
    for (const QString& name : names) {
        static_cast<void>(asked.localizedActionDescription(name));
        static_cast<void>(asked.keyBindingsForAction(name));
    }
    asked.doAction(names.isEmpty() ? anyText() : names[number(0, static_cast<int>(names.size()) - 1)]);
}

void AccessibleClient::askOfTable(QAccessibleTableInterface& asked) {
    const int rows = asked.rowCount(), columns = asked.columnCount();
    keep(asked.cellAt(index(rows), index(columns)));
    keep(asked.caption());
    keep(asked.summary());
    static_cast<void>(asked.columnDescription(index(columns)));
    static_cast<void>(asked.rowDescription(index(rows)));
    static_cast<void>(asked.isRowSelected(index(rows)));
    static_cast<void>(asked.isColumnSelected(index(columns)));
    static_cast<void>(asked.selectedRows());
    static_cast<void>(asked.selectedColumns());
    for (const QAccessibleInterface* cell : asked.selectedCells()) keep(cell);
    number(0, 1) == 0 ? asked.selectRow(index(rows)) : asked.unselectRow(index(rows));
    number(0, 1) == 0 ? asked.selectColumn(index(columns)) : asked.unselectColumn(index(columns));
}

void AccessibleClient::askOfCell(const QAccessibleTableCellInterface& asked) {
    keep(asked.table());
    static_cast<void>(asked.isSelected());
    static_cast<void>(asked.rowIndex() + asked.columnIndex() + asked.rowExtent() + asked.columnExtent());
    for (const QAccessibleInterface* header : asked.rowHeaderCells()) keep(header);
    for (const QAccessibleInterface* header : asked.columnHeaderCells()) keep(header);
}

}  // namespace kestrel::qt::testing

// What a screen reader learns of a line of text.
#include "qt/views/spoken_text.h"

#include <QTextBoundaryFinder>
#include <algorithm>

#include "qt/views/spoken_view.h"

namespace kestrel::qt {

namespace {

/// Offsets by which a client means a place that it does not know.
constexpr int AtTheCursor = -1;
constexpr int AtTheEnd = -2;

}  // namespace

int SpokenText::within(int offset) const { return std::clamp(offset, 0, characterCount()); }

QString SpokenText::text(QAccessible::Text kind) const {
    if (kind == QAccessible::Value) return line_.displayText();
    const auto* view = dynamic_cast<const ViewBase*>(&line_);
    const QString name = view && kind == QAccessible::Name ? nameOnPage(*view) : QString();
    return name.isEmpty() ? QAccessibleWidget::text(kind) : name;
}

QAccessible::State SpokenText::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = true;
    state.readOnly = line_.isReadOnly();
    state.selectableText = true;
    return state;
}

void* SpokenText::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    const bool canBeEdited = !line_.isReadOnly() && line_.isEnabled();
    if (type == QAccessible::EditableTextInterface && canBeEdited)
        return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

int SpokenText::characterCount() const { return static_cast<int>(line_.text().size()); }

QString SpokenText::text(int from, int to) const {
    return line_.displayText().mid(within(from), within(to) - within(from));
}

QString SpokenText::textAtOffset(int offset, QAccessible::TextBoundaryType kind, int* from, int* to) const {
    const int count = characterCount();
    if (offset == AtTheCursor) offset = cursorPosition();
    if (offset == AtTheEnd) offset = count;
    *from = *to = -1;
    if (offset < 0 || offset > count) return {};
    *from = 0;
    *to = count;
    if (kind == QAccessible::CharBoundary) {
        *from = offset;
        *to = within(offset + 1);
    } else if (kind == QAccessible::WordBoundary || kind == QAccessible::SentenceBoundary) {
        const auto pieces =
            kind == QAccessible::WordBoundary ? QTextBoundaryFinder::Word : QTextBoundaryFinder::Sentence;
        QTextBoundaryFinder finder(pieces, line_.displayText());
        finder.setPosition(offset);
        if (const auto end = finder.toNextBoundary(); end >= 0) *to = static_cast<int>(end);
        finder.setPosition(*to);
        *from = within(static_cast<int>(finder.toPreviousBoundary()));
    }
    return text(*from, *to);
}

QRect SpokenText::characterRect(int offset) const {
    if (offset < 0 || offset >= characterCount()) return {};
    const QFontMetrics font = line_.fontMetrics();
    const int left = line_.textMargins().left() + font.horizontalAdvance(text(0, offset));
    const QRect place(left, 0, font.horizontalAdvance(text(offset, offset + 1)), line_.height());
    return place.translated(line_.mapToGlobal(QPoint()));
}

int SpokenText::offsetAtPoint(const QPoint& point) const {
    const QPoint inside = line_.mapFromGlobal(point);
    return line_.rect().contains(inside) ? line_.cursorPositionAt(inside) : -1;
}

QString SpokenText::attributes(int offset, int* from, int* to) const {
    *from = *to = offset;
    return {};
}

void SpokenText::scrollToSubstring(int from, int to) {
    setCursorPosition(within(to));
    setCursorPosition(within(from));
}

void SpokenText::selection(int number, int* from, int* to) const {
    const bool isThere = number == 0 && line_.hasSelectedText();
    *from = isThere ? line_.selectionStart() : 0;
    *to = isThere ? line_.selectionEnd() : 0;
}

void SpokenText::setSelection(int number, int from, int to) {
    if (number == 0) line_.setSelection(within(from), within(to) - within(from));
}

void SpokenText::removeSelection(int number) {
    if (number == 0) line_.deselect();
}

void SpokenText::replaceText(int from, int to, const QString& text) {
    if (line_.isReadOnly() || !line_.isEnabled()) return;
    setSelection(0, from, to);
    if (from == to) setCursorPosition(within(from));
    line_.insert(text);
}

}  // namespace kestrel::qt

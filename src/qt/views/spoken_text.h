// What a screen reader learns of a line of text, and how it edits it: as the user would.
// The toolkit's own interface never answers what word stands at the end of a text, nor does the program after that.
#pragma once

#include <QAccessibleWidget>
#include <QLineEdit>

namespace kestrel::qt {

class SpokenText : public QAccessibleWidget, public QAccessibleTextInterface, public QAccessibleEditableTextInterface {
  public:
    explicit SpokenText(QLineEdit& line) : QAccessibleWidget(&line, QAccessible::EditableText), line_(line) {}

    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    int characterCount() const override;
    int cursorPosition() const override { return line_.cursorPosition(); }
    void setCursorPosition(int position) override { line_.setCursorPosition(position); }
    QString text(int from, int to) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType kind, int* from, int* to) const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    QString attributes(int offset, int* from, int* to) const override;
    void scrollToSubstring(int from, int to) override;

    int selectionCount() const override { return line_.hasSelectedText() ? 1 : 0; }
    void selection(int number, int* from, int* to) const override;
    void addSelection(int from, int to) override { setSelection(0, from, to); }
    void setSelection(int number, int from, int to) override;
    void removeSelection(int number) override;

    void insertText(int offset, const QString& text) override { replaceText(offset, offset, text); }
    void deleteText(int from, int to) override { replaceText(from, to, {}); }
    void replaceText(int from, int to, const QString& text) override;

  private:
    /// A place in the text, whatever was asked for.
    int within(int offset) const;

    QLineEdit& line_;
};

}  // namespace kestrel::qt

// Shows a text box. What is typed stays in the view until Enter or leaving the box hands it to the page; closing the
// page drops it.
// Escape brings back what the board has told, also if it told it since the typing began.
#pragma once

#include <QLineEdit>

#include "platform/basic_controls.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class TextBoxView : public View<TextBox, QLineEdit> {
  public:
    explicit TextBoxView(TextBox& box);

    void dropTyping() override;
    void renamed() override;
    QAccessible::Role spokenRole() const override { return QAccessible::EditableText; }
    /// As it is shown: a concealed one tells only how long it is.
    QString valueInWords() const override { return displayText(); }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void showModel();
    /// As the model stands, or with both figures of a change that has no answer or came to nothing.
    QString shownText() const;
    void typed(const QString& text);
    void showColor(const QColor& ink);
    void explain(Objection objection);
    /// Tells the page, once, that the user has left the box.
    void leave();
    /// Hands the typed text over, then tells the page what the user did.
    void commit(void (TextBox::*action)());

    bool edited_ = false;   // something was typed and not handed over yet
    bool entered_ = false;  // the page has not been told yet that the user left
};

}  // namespace kestrel::qt

// Shows the figure of a bar as a field in which it is changed: typed in place, stepped by keys, and by - and + where
// the range is too wide for a trough. What is typed, and what becomes of it, the model knows.
#pragma once

#include <QAbstractSpinBox>

#include "platform/basic_controls.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class FieldView : public View<Label, QAbstractSpinBox> {
  public:
    explicit FieldView(Label& figure);

    void dropTyping() override;
    bool isOf(const ScrollBar& bar) const { return bound() && model().bar() == &bar; }
    /// Where a bar has no trough, its field is all that shows it.
    bool standsFor(const Control& control) const override {
        return shows(control) || (bound() && model().bar() == &control);
    }
    /// Enter goes on to the next field, as in a sheet.
    void goesOnByEnter() { goesOn_ = true; }
    QAccessible::Role spokenRole() const override { return QAccessible::SpinBox; }
    QString valueInWords() const override { return shownText(); }
    std::optional<Span> span() const override;
    void moveTo(int value) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    void stepBy(int steps) override;

  protected:
    StepEnabled stepEnabled() const override;
    QString ownTip() const override;
    void showState() override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    ScrollBar& bar() const { return *model().bar(); }
    template <class Action>
    void actOnBar(Action&& action) {
        act([&](Label& figure) { action(*figure.bar()); });
    }
    bool isOpen() const;
    /// What stands in the field while nothing is typed.
    QString shownText() const;
    QString plainText() const;
    void showText();
    void showColor();
    /// Where a figure stands with two in it, the user goes into the plain one.
    void showPlain();
    bool handledAsStep(const QKeyEvent& event);
    void enter();
    void leave();
    void explain(Objection objection);
    int widthFor(const QString& text) const;

    QString text_;
    QColor ink_;
    bool isPlain_ = false;
    bool isFresh_ = false;  ///< the user has just come in by the mouse: the first click takes the whole figure
    bool goesOn_ = false;
    int wheelRest_ = 0;
};

}  // namespace kestrel::qt

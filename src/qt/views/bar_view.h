// Shows a scroll bar: arrow ends for single steps, a trough for large ones, a handle to drag.
// While the user acts, the handle carries the value to come. A value can be typed too, in a field that a figure or
// Enter opens: Enter or leaving the bar hands it over, Escape or closing the page drops it.
#pragma once

#include <QTimer>

#include "platform/basic_controls.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class BarView : public View<ScrollBar> {
  public:
    explicit BarView(ScrollBar& bar);

    void dropTyping() override { setTyped({}); }
    /// Opens the field with the present value in it, all of it chosen: the first figure takes its place.
    void beginTyping();
    QAccessible::Role spokenRole() const override { return QAccessible::Slider; }
    QString valueInWords() const override;
    std::optional<Span> span() const override;
    void moveTo(int value) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    enum class Part { None, Less, LargeLess, Handle, LargeMore, More };

    double ratio() const;
    QRectF trough() const;
    QRectF handle() const;
    Part partAt(const QPointF& point) const;
    int valueAt(double handleLeft) const;
    void stepBy(int amount);
    void turnAway();
    void step();
    void repeatPressed();
    void drawEnds(class Brush& brush) const;
    void paintHandle(class Brush& brush) const;
    void paintField(class Brush& brush, const QRectF& knob) const;
    /// What the handle carries: the typed text, the preview in the page's scale, or nothing.
    QString handleText() const;
    bool typed(const QKeyEvent& event);
    void setTyped(const QString& text, bool chosen = false);
    void leave();
    /// Hands a typed value over. False, and nothing is done, when it is none of the bar's.
    bool commitTyped();

    QTimer repeat_;
    QString typed_;
    bool chosen_ = false;  ///< the typed text is still the value that the field was opened with
    int value_ = 0;        ///< as the model shows it
    bool isMoving_ = false;
    int lowest_ = 0;
    int highest_ = 0;
    Part pressed_ = Part::None;
    QPointF pointer_;
    double grip_ = 0;
    int wheelRest_ = 0;
};

}  // namespace kestrel::qt

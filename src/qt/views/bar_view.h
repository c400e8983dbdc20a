// Shows a bar: arrow ends for single steps, a trough for large ones, a handle to drag.
// Its figure stands in a field beside it, which takes the keys; a bar without one takes them itself.
#pragma once

#include <QScrollBar>
#include <QStyle>

#include "platform/basic_controls.h"
#include "qt/views/field_view.h"

namespace kestrel::qt {

class BarView : public View<ScrollBar, QScrollBar> {
  public:
    explicit BarView(ScrollBar& bar);

    bool isBarOf(const FieldView& field) const { return bound() && field.isOf(model()); }
    QAccessible::Role spokenRole() const override { return QAccessible::Slider; }
    QString valueInWords() const override { return toQt(model().textOf(value())); }
    std::optional<Span> span() const override;
    void moveTo(int value) override;

    QSize sizeHint() const override { return {rowHeight(*this) * 5, rowHeight(*this)}; }
    QSize minimumSizeHint() const override { return {rowHeight(*this) * 2, rowHeight(*this)}; }

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override { event->ignore(); }
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    /// The toolkit has moved its handle.
    void moved();
    QRectF partOf(QStyle::SubControl part) const;
    void drawEnds(class Brush& brush) const;

    bool isPressed_ = false;
    bool hasBegun_ = false;  ///< the gesture of this press; what the model drops does not begin again
    int wheelRest_ = 0;
};

}  // namespace kestrel::qt

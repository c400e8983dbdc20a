// A row that is pressed as a whole: what is said of a switch stands beside it and is part of its target.
#pragma once

#include <QWidget>

namespace kestrel::qt {

class ViewBase;

class TargetRow : public QWidget {
  public:
    /// The view that a click on the row presses; it stands in the row.
    void presses(ViewBase& pressed) { pressed_ = &pressed; }
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;

  private:
    bool takesClicks() const;

    ViewBase* pressed_ = nullptr;
    bool down_ = false;
};

}  // namespace kestrel::qt

// The buttons of a strip chart: pause, show all, follow.
// Their signs are drawn; the words stand in tooltip and accessible name.
#pragma once

#include <QToolButton>

#include "qt/window/words.h"

namespace kestrel::qt {

class ChartButton : public QToolButton {
  public:
    enum class Sign { Pause, Fit, Follow };

    ChartButton(Sign sign, Word name, QWidget* parent);
    QSize sizeHint() const override;
    /// The language may have changed.
    void renamed();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Sign sign_;
    Word name_;
};

}  // namespace kestrel::qt

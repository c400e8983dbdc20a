// The buttons of a strip chart: pause, show all, follow.
// Their signs are drawn; the words stand in tooltip and accessible name.
#pragma once

#include <QToolButton>

namespace kestrel::qt {

class ChartButton : public QToolButton {
  public:
    enum class Sign { Pause, Fit, Follow };

    ChartButton(Sign sign, const QString& words, QWidget* parent);
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Sign sign_;
};

}  // namespace kestrel::qt

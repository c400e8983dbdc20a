// Shows a vertical gauge: a tube with a scale beside it.
// A value beyond the scale fills the tube to its end and is marked there.
#pragma once

#include "platform/displays.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class ThermometerView : public View<Thermometer> {
  public:
    explicit ThermometerView(Thermometer& gauge);

    QAccessible::Role spokenRole() const override { return QAccessible::Indicator; }
    QString valueInWords() const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;

  private:
    bool beyond() const { return value_ < lowest_ || value_ > highest_; }
    QRectF tube() const;
    double yOf(double value) const;
    void paintScale(class Brush& brush) const;

    double value_ = 0;
    double lowest_ = 0;
    double highest_ = 0;
};

}  // namespace kestrel::qt

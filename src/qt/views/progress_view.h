// Shows a progress bar.
// A value beyond its range fills the bar.
#pragma once

#include "platform/basic_controls.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class ProgressView : public View<ProgressBar> {
  public:
    explicit ProgressView(ProgressBar& bar);

    QAccessible::Role spokenRole() const override { return QAccessible::ProgressBar; }
    QString valueInWords() const override;
    QSize sizeHint() const override;

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;

  private:
    double part() const;

    int value_ = 0;
    int highest_ = 0;
};

}  // namespace kestrel::qt

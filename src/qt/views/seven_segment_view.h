// Shows numbers and times in figures of seven segments.
// What has no room, or is no number, is shown as dashes.
#pragma once

#include <QLCDNumber>

#include "platform/displays.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class SevenSegmentView : public View<SevenSegment, QLCDNumber> {
  public:
    explicit SevenSegmentView(SevenSegment& display);

    QAccessible::Role spokenRole() const override { return QAccessible::Indicator; }
    QString valueInWords() const override;
    QSize sizeHint() const override;

  protected:
    void showState() override;

  private:
    QString text_;
    bool overflow_ = false;
};

class ClockView : public View<ClockDisplay, QLCDNumber> {
  public:
    explicit ClockView(ClockDisplay& clock);

    QAccessible::Role spokenRole() const override { return QAccessible::Clock; }
    QString valueInWords() const override;
    QSize sizeHint() const override;

  protected:
    void showState() override;

  private:
    QString text_;
};

}  // namespace kestrel::qt

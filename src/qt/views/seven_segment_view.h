// Shows numbers and times in figures of seven segments.
// A number that has no room, and a time that is not known, are shown as dashes.
#pragma once

#include "platform/displays.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class SevenSegmentView : public View<SevenSegment> {
  public:
    explicit SevenSegmentView(SevenSegment& display);

    QAccessible::Role spokenRole() const override { return QAccessible::Indicator; }
    QString valueInWords() const override;
    QSize sizeHint() const override;

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QString text_;
    bool overflow_ = false;
};

class ClockView : public View<ClockDisplay> {
  public:
    explicit ClockView(ClockDisplay& clock);

    QAccessible::Role spokenRole() const override { return QAccessible::Clock; }
    QString valueInWords() const override;
    QSize sizeHint() const override;

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;

  private:
    bool known() const;

    int minutes_ = ClockDisplay::NoTime;
};

}  // namespace kestrel::qt

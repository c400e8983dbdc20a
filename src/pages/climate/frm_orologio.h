// Clock: the machine's clock and calendar, their setting, and the daily time bands of switching on, rinsing and
// discounts. Everything lies on the master; a machine without a clock has the bands alone.
#pragma once

#include <array>

#include "pages/common/table_page.h"
#include "pages/common/time_bar.h"
#include "platform/displays.h"

namespace kestrel {

class FrmOrologio : public TablePage {
  public:
    static constexpr int BandBars = 20;
    static constexpr int BandCount = BandBars / 2;

    FrmOrologio();

    Frame Frame1;                         ///< the clock and its setting
    ClockDisplay iSevenSegmentClockX1;    ///< the running clock
    Label Label6;                         ///< its date
    ControlArray<Label, 2> Label41;       ///< captions
    ControlArray<ScrollBar, 2> HScroll2;  ///< hours and minutes to set
    ControlArray<Label, 2> Label4;        ///< values
    ControlArray<Label, 3> Label5s;       ///< captions
    ControlArray<ScrollBar, 3> HScroll5;  ///< day, month and year to set
    ControlArray<Label, 3> Label5;        ///< values

    Frame Frame2;                                ///< bands of switching on
    Frame Frame3;                                ///< rinses
    Frame Frame4;                                ///< bands of discounts
    ControlArray<Label, BandCount> Label2;       ///< captions of the bands
    ControlArray<ScrollBar, BandBars> HScroll1;  ///< even: hours, odd: minutes
    ControlArray<Label, BandBars> Label1;        ///< values
    ControlArray<Label, BandBars> Label3;        ///< units

    std::array<TimeBar, BandCount> BandTimes;  ///< each over the two bars of its band
    TimeBar ClockTime;                         ///< over those that set the clock
    Label ClockTimeCaption;
    CommandButton SetToComputer;  ///< sets the clock and the calendar to those of this computer

    /// The user moved a bar that sets the clock, and no such value has come back since.
    bool Editing = false;

    Layout Arrange() override;
    void SLabel_Change(int n, ParamValue value) override;

  private:
    void PageCaptions() override;
    void explainCaptions();
    void HScroll1_Change(int Index);
    void HScroll2_Change(int Index);
    void HScroll5_Change(int Index);
    TimeBar& bandTime(int band) { return BandTimes[static_cast<std::size_t>(band)]; }
    Layout bandRows(int first, int last);
    void SetToComputer_Click();
    /// Sets one part of the clock, also to what its bar shows: the clock has gone on since.
    void setPart(ScrollBar& bar, const Setting& setting, int value);
    void enableClock(bool live);
    void showSetting(int n, ParamValue value);
    void takeClock(int n, ParamValue value);
    void showTime();
    void showDate();

    static constexpr ParamValue NoTime = 255;
    ParamValue ClockHours = NoTime;
    ParamValue ClockMinutes = NoTime;
    bool FirstTime = true;  ///< the setting bars have not been taken from the clock yet
    bool FirstDate = true;
    ParamValue Features = 0;
    int Day = 0;
    int Month = 0;
    int Year = 0;
};

}  // namespace kestrel

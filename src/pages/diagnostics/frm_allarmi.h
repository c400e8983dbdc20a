// Alarms: the last ten that the master has stored, newest first, with date and time.
// The master keeps them in a ring of ten records; the page waits until it has all of it, then draws it. It only reads.
#pragma once

#include <array>
#include <cstdint>

#include "pages/common/table_page.h"

namespace kestrel {

class FrmAllarmi : public TablePage {
  public:
    FrmAllarmi();

    Label Label1;
    ListView ListView1;
    CommandButton copyList;    ///< gives the list to other programs
    ProgressBar ProgressBar1;  ///< fills while the ring is being read for the first time

    Layout Arrange() override;
    void SLabel_Change(int n, ParamValue value) override;

  private:
    static constexpr int RingValues = 60;

    void PageCaptions() override;
    void countArrival();
    void ShowAlarms();
    std::vector<std::string> alarmRow(int number, ParamValue slot) const;
    /// A value of the ring by its offset; one beyond the ring is a run-time error.
    std::int16_t AlarmData(ParamValue offset) const;

    std::array<std::int16_t, RingValues + 1> alarmData_{};  ///< the last element holds nothing
    ParamValue AlarmPointer = 0;                            ///< slot of the newest record
    long ArrivalCount = 0;
};

}  // namespace kestrel

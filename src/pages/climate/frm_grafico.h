// Temperature graph: boiler and tank temperature as a live strip chart over the time since the page was opened.
// A sample is taken every four seconds; nothing is kept when the page closes.
#pragma once

#include <cstdint>

#include "pages/common/table_page.h"
#include "platform/displays.h"

namespace kestrel {

class FrmGrafico : public TablePage {
  public:
    FrmGrafico();

    StripChart iStripChartX1{2};  ///< channel 0 boiler, channel 1 tank; degrees
    Timer Timer1{1000};           ///< milliseconds; 4000 from the loading of the page on

    Layout Arrange() override;
    void Form_Load() override;
    void Form_Unload() override;
    void SLabel_Change(int n, ParamValue value) override;

  private:
    void PageCaptions() override;
    /// Adds one sample. The number of samples has 16 bits, signed: one more is a run-time error.
    void Timer1_Timer();

    double ChartTime = 0;  ///< of the next sample, in days
    std::int16_t SampleCount = 0;
    int TankOffset = 0;      ///< degrees
    double TankValue = 0;    ///< degrees
    double BoilerValue = 0;  ///< degrees
    ParamValue Param2 = 0;   ///< presence word of the sector board
    ParamValue Param1 = 0;   ///< presence word of the hot-drink board
};

}  // namespace kestrel

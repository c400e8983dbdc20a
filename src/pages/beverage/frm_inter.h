// Intermittence: whether the dosing of each powder is intermittent, and its on and off times.
// Five rows on the hot-drink board; only as many open as the machine has powders.
#pragma once

#include <cstdint>

#include "link/presence.h"
#include "pages/common/arrival_count.h"
#include "pages/common/table_page.h"
#include "platform/switches.h"

namespace kestrel {

class FrmInter : public TablePage {
  public:
    static constexpr int Powders = 5;

    FrmInter();

    ControlArray<Label, 4> Label1;                    ///< heads: powder, enabled, on time, off time
    ControlArray<Label, 3> Label2;                    ///< second line of the last three heads
    ControlArray<Label, Powders> Label3;              ///< number of the powder
    ControlArray<SliderSwitch, Powders> iSwSliderX1;  ///< 1: intermittent
    ControlArray<ScrollBar, Powders> HScroll4;        ///< on time, tenths of a second
    ControlArray<Label, Powders> Label4s;
    ControlArray<ScrollBar, Powders> HScroll5;  ///< off time, tenths of a second
    ControlArray<Label, Powders> Label5s;

    Layout Arrange() override;
    void Form_Activate() override;

  private:
    void PageSubscribe() override;
    void PageRelease() override;
    void PageCaptions() override;
    void valueCame(int n, ParamValue value) override;
    void valueShown() override;
    void iSwSliderX1_PositionChange(int Index);
    void LockRows();
    void UnlockRows();
    void enableRow(int row, bool live);
    void statusArrived(ParamValue value);
    void settingArrived(int n, ParamValue value);

    ParamValue LastStatus = NoPresence;
    ParamValue ProductCount = 0;  ///< powders of the machine
    std::uint8_t EnableBits = 0;  ///< a bit for each powder, as last received or written
    ArrivalCount Arrivals;
};

}  // namespace kestrel

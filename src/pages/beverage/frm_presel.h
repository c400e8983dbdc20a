// Preselections: product, type, time and "Plus" time of each of the machine's four preselections.
// All on the hot-drink board; the "Plus" times are never locked.
#pragma once

#include "link/presence.h"
#include "pages/common/arrival_count.h"
#include "pages/common/table_page.h"
#include "platform/switches.h"

namespace kestrel {

class FrmPresel : public TablePage {
  public:
    static constexpr int Preselections = 4;

    FrmPresel();

    Frame PlainBlock, PlusBlock;                            ///< without titles
    ControlArray<Label, 6> Label4;                          ///< heads, the last two of the "Plus" block
    ControlArray<Label, 2 * Preselections> Label0;          ///< names of the rows, from index 4 on of the "Plus" block
    ControlArray<SliderSwitch, Preselections> iSwSliderX1;  ///< product, 0: none
    ControlArray<SliderSwitch, Preselections> iSwSliderX2;  ///< type, 0 to 5
    ControlArray<ScrollBar, 2 * Preselections> HScroll1;    ///< tenths of a second, from index 4 on of the "Plus" block
    ControlArray<Label, 2 * Preselections> Label1;

    Layout Arrange() override;

  private:
    void PageSubscribe() override;
    void PageRelease() override;
    void PageCaptions() override;
    void valueCame(int n, ParamValue value) override;
    void valueShown() override;
    void iSwSliderX1_PositionChangeUser(int Index);
    void iSwSliderX2_PositionChangeUser(int Index);
    void LockPreselections();
    void UnlockPreselections();
    void enableRows(bool live);
    void labelPositions();
    void countOrUnlock();
    void statusArrived(ParamValue value);
    void settingArrived(int n, ParamValue value);
    void productCountArrived(ParamValue value);

    ParamValue LastStatus = NoPresence;
    ParamValue ProductCount = 0;
    ArrivalCount Arrivals;
};

}  // namespace kestrel

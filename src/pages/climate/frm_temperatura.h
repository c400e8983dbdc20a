// Temperature set-points: boiler and refrigerator on the hot-drink board, the tank on the sector board.
// Each frame is live only while its board is there; the refrigerator's row shows only on machines that have one.
#pragma once

#include "link/page.h"

namespace kestrel {

class FrmTemperatura : public Page {
  public:
    static constexpr int Settings = 6;
    static constexpr int Refrigerator = 5;  ///< the setting that stands in Frame1

    FrmTemperatura();

    Frame Frame1;                                ///< boiler and refrigerator
    Label Label1s;                               ///< caption of the boiler's set-point
    ScrollBar HScroll1;                          ///< the boiler's set-point
    Label Label1;                                ///< the boiler's set-point as the board holds it
    Frame Frame2;                                ///< tank
    ControlArray<Label, Settings> Label2s;       ///< captions
    ControlArray<ScrollBar, Settings> HScroll2;  ///< as the boards hold them
    ControlArray<Label, Settings> Label2;        ///< values

    Layout Arrange() override;
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;
    void SLabel_Change(int n, ParamValue value) override;

  private:
    void PageSubscribe();
    void PageRelease();
    void PageCaptions();
    void HScroll1_Change();
    void HScroll2_Change(int Index);
    void enableBoiler(bool live);
    void enableTank(bool live);
    void showRefrigerator(bool fitted);
    void showSetting(int index, ParamValue value);

    ParamValue Param2 = 0;  ///< last presence word of the sector board
    ParamValue Param1 = 0;  ///< last presence word of the hot-drink board
};

}  // namespace kestrel

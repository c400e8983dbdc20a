// Temperature set-points: boiler and refrigerator on the hot-drink board, the tank on the sector board.
// Each frame is live only while its board is there; the refrigerator's row shows only on machines that have one.
#pragma once

#include "pages/common/table_page.h"

namespace kestrel {

class FrmTemperatura : public TablePage {
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
};

}  // namespace kestrel

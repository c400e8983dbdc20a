// Times: the machine-wide times of the brewing group and of the water circuit.
// Seven bars on the hot-drink board, one on the sector board; each frame is live only while its board is there.
#pragma once

#include "pages/common/table_page.h"

namespace kestrel {

class FrmTempi : public TablePage {
  public:
    static constexpr int Bars = 8;

    FrmTempi();

    Frame Frame1;                            ///< the hot-drink board's times
    Frame Frame2;                            ///< the sector board's time
    ControlArray<Label, Bars> Label2;        ///< captions
    ControlArray<ScrollBar, Bars> HScroll1;  ///< tenths of a second
    ControlArray<Label, Bars> Label1;        ///< values as the boards hold them

    Layout Arrange() override;
};

}  // namespace kestrel

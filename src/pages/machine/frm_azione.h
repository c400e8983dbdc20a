// Preventive maintenance: six counts of cycles after which the hot-drink board calls for service.
// The board keeps each count twice, unsigned, in 16 bits.
#pragma once

#include "pages/common/table_page.h"

namespace kestrel {

class FrmAzione : public TablePage {
  public:
    static constexpr int Counts = 6;

    FrmAzione();

    ControlArray<Label, Counts> Label6;        ///< captions
    ControlArray<ScrollBar, Counts> HScroll1;  ///< cycles minus 32768
    ControlArray<Label, Counts> Label10;       ///< cycles as the board holds them

    Layout Arrange() override;
};

}  // namespace kestrel

// Totals: the machine's sales totals, those that can be cleared and those that cannot.
// The page only reads; money is shown with the decimals that the master reports.
#pragma once

#include <map>

#include "pages/common/table_page.h"
#include "platform/tally.h"

namespace kestrel {

class FrmTotali : public TablePage {
  public:
    FrmTotali();

    Frame Frame2;                   ///< totals that can be cleared
    Frame Frame1;                   ///< totals that cannot
    ControlArray<Label, 9> Label2;  ///< captions in Frame2
    ControlArray<Tally, 9> Label3;  ///< values in Frame2
    ControlArray<Label, 2> Label1;  ///< captions in Frame1
    ControlArray<Label, 2> Label4;  ///< values in Frame1
    Timer Timer1{15000};            ///< milliseconds; has the totals read again

    Layout Arrange() override;

  private:
    Label& valueLabel(bool clearable, int index);
    void showDecimals(int decimals);
    void tally(int index, ParamValue count);

    int decimals_ = 0;
    std::map<int, ParamValue> counts_;  ///< of the totals that can be cleared, as far as they have come
};

}  // namespace kestrel

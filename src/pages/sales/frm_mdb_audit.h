// MDB audit: six running amounts of the MDB payment system, and a button that clears them.
// Amounts are shown raw, whatever the decimals of money.
#pragma once

#include "pages/common/table_page.h"

namespace kestrel {

class FrmMDBaudit : public TablePage {
  public:
    static constexpr int Amounts = 6;

    FrmMDBaudit();

    ControlArray<Label, Amounts> Label1;  ///< captions
    ControlArray<Label, Amounts> Label2;  ///< raw amounts
    CommandButton Command1;               ///< clears them
    Timer Timer1{15000};                  ///< milliseconds; has the amounts read again

    Layout Arrange() override;

  private:
    void valueCame(int n, ParamValue value) override;
    void Command1_Click();
};

}  // namespace kestrel

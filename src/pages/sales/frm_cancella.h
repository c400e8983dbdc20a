// Clearing: orders the master to clear its sales data, and shows two seconds of waiting.
// The page asks the board for nothing and waits for no word from it.
#pragma once

#include "pages/common/table_page.h"
#include "platform/displays.h"

namespace kestrel {

class FrmCancella : public TablePage {
  public:
    FrmCancella();

    Frame Frame1;
    ControlArray<CommandButton, 2> cmdCancella;  ///< sales data; those that cannot be cleared otherwise
    LedBar lbrInfo;                              ///< time gone by
    Label lblInfo;                               ///< closing message
    Label noAnswerHint;                          ///< that the machine does not say whether it has done it
    Label checkHint;                             ///< where to see it
    CommandButton mnuClose;                      ///< closes the page
    Timer Timer1{100};                           ///< milliseconds; one step of the bar

    Layout Arrange() override;
    void Form_Load() override;
    void Form_Unload() override;

  private:
    void PageCaptions() override;
    void cmdCancella_Click(int Index);
    void clear(int Index);
    void Timer1_Timer();
};

}  // namespace kestrel

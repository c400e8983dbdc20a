// Model test: runs a pair of numbers that is picked on a drawing of the sector model, and puts its motors to zero.
// The page locks itself until the board has finished.
#pragma once

#include "link/page.h"
#include "pages/common/mailbox.h"

namespace kestrel {

class FrmTestCedar : public Page {
  public:
    static constexpr int Zones = 6;

    FrmTestCedar();

    Picture Image1{"cedar"};
    ControlArray<Label, Zones> Label1;  ///< click zones on the drawing, three above three
    ControlArray<Label, 2> Label2;      ///< caption, and the pair that runs
    CommandButton Command1;             ///< motors to zero
    Timer Timer1{2000};                 ///< milliseconds; ends the wait for a master that does not start

    Layout Arrange() override;
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;
    void SLabel_Change(int n, ParamValue value) override;
    void LineInterrupted() override;

  private:
    void PageSubscribe();
    void PageRelease();
    void PageCaptions();
    void Label1_Click(int Index);
    void Command1_Click();
    void Timer1_Timer();
    void EnableZones() { setZones(true); }
    void DisableZones() { setZones(false); }
    void setZones(bool live);
    void masterChanged(int n, ParamValue value);
    void forgetPair();
    void giveUp();
    void backToIdle();

    int FirstChoice = 0;             ///< 1 to 6, or 0 for none
    int SecondChoice = 0;            ///< 1 to 6, or 0 for none
    ParamValue CedarPresence = 255;  ///< never reported, so that the first word counts as a change
    bool TestRunning = false;
    bool ZeroRunning = false;
    Handshake pair_;  ///< with the master; the zeroing goes to the sector board without a mailbox
};

}  // namespace kestrel

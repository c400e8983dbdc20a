// In/Out test: the inputs of three boards as lamps, and in test mode every output of the two slave boards as a switch.
// A switch only asks: it is put back after the click and moves when the board reports that it drives the output.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>

#include "link/page.h"
#include "pages/common/mailbox.h"
#include "pages/diagnostics/test_parameters.h"
#include "platform/displays.h"
#include "platform/switches.h"

namespace kestrel {

class FrmInOut : public Page {
  public:
    static constexpr int MasterInputs = 6;
    static constexpr int AlderInputs = 15;
    static constexpr int AlderOutputs = 40;
    static constexpr int CedarOutputs = 48;
    static constexpr int OutputsPerByte = 8;

    FrmInOut();

    Frame Frame1;  ///< the master board
    ControlArray<Label, MasterInputs> Label1;
    ControlArray<Led, MasterInputs> LedX1;

    Frame Frame2;  ///< the Alder board
    ControlArray<Label, AlderInputs> Label3;
    ControlArray<Led, 18> iLedRectangleX1;  ///< 13, 15 and 16 stand for nothing and on no place
    ControlArray<Label, AlderOutputs> Label4;
    ControlArray<LedSwitch, AlderOutputs> SwitchLed1;
    Label Label6;  ///< caption of the boiler reading
    SevenSegment iAnalogX1;

    Frame Frame3;  ///< the Cedar board
    ControlArray<Label, CedarOutputs> Label5;
    ControlArray<LedSwitch, CedarOutputs> SwitchLed3;
    Label Label2;  ///< caption of the compressor
    LedSwitch SwitchLed4;
    Label Label8;  ///< caption of the tank reading
    SevenSegment iAnalogX2;

    CommandButton Command1;  ///< starts and stops the test
    Label Label7;            ///< state of the test
    Timer Timer1{5000};      ///< milliseconds; unlocks the switches when no echo comes

    Layout Arrange() override;
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;
    void SLabel_Change(int n, ParamValue value) override;
    void LineInterrupted() override;
    void LineResumed() override { tellMaster(); }

  private:
    void PageSubscribe();
    void PageRelease();
    void PageCaptions();
    void nameRows();

    void tellMaster();
    void Command1_Click();
    void Timer1_Timer();
    void ShowTestState();
    void TestStateReported();
    void beginSwitchOrder();
    void echoUnlocks();
    void withdrawOrders();
    void EnableSwitches() {
        if (TestActive) setSwitches(true);
    }
    void setAlderSwitches(bool live);
    void setCedarSwitches(bool live);
    void outputsTold();
    void DisableSwitches() { setSwitches(false); }
    void setSwitches(bool live);
    void masterChanged(int n, ParamValue value);
    void presenceChanged();

    // The Alder board.
    void EnableAlderFrame();
    void DisableAlderFrame();
    void setAlderFrame(bool live);
    void alderChanged(int n, ParamValue value);
    void alderEcho(int byte, ParamValue value);
    void SwitchLed1_Click(int Index);
    void writeAlderTestTime(unsigned time);
    void rearmAlder();

    // The Cedar board.
    void EnableCedarFrame();
    void DisableCedarFrame();
    void setCedarFrame(bool live);
    void cedarChanged(int n, ParamValue value);
    void cedarReading(ParamValue value);
    void cedarEcho(ParamValue bitByte);
    void SwitchLed3_Click(int Index);
    void SwitchLed4_Click();
    void writeCedarOutput(unsigned group, unsigned bit);
    void writeCedarTestTime(unsigned time);
    void rearmCedar();

    /// The unit of the test time is the boards' own.
    static constexpr unsigned TestTimeRun = 60;
    static constexpr unsigned TestTimeStop = 0;
    static constexpr int NoOutput = 65535;
    static constexpr ParamValue NeverReported = 255;
    using OutputBytes = std::array<std::uint8_t, alder::MailboxBytes>;

    bool TestActive = false;   ///< the boards are in test mode and the switches work
    bool AlderInTest = false;  ///< as reported; an absent board counts as in test
    bool CedarInTest = false;
    std::array<bool, alder::MailboxBytes> PendingEcho{};  ///< by output byte; the last also stands for a Cedar output
    bool PendingCompressor = false;
    std::bitset<alder::MailboxBytes> alderTold_;  ///< output bytes whose echo has come: an order writes all of them
    bool groupTold_ = false;                      ///< of the Cedar board, and then the pair
    bool cedarTold_ = false;
    int LastCedarOutput = NoOutput;  ///< the one output that this page last switched on
    OutputBytes OutputByte{};        ///< of the Alder board, from its echo and from the switches
    ParamValue CedarGroup = 0;       ///< latest pair of echoes ...
    ParamValue CedarBit = 0;
    ParamValue CedarGroupNew = 0;  ///< ... and the first of a pair that is not whole yet
    ParamValue CedarOffset = 0;    ///< degrees
    double CedarReading = 0;       ///< whole degrees
    ParamValue AlderPresence = NeverReported;
    ParamValue CedarPresence = NeverReported;
    Handshake AlderHandshake{alder::Bank, alder::Command};
    Handshake CedarHandshake{cedar::Bank, cedar::Command};
    bool switchOrdered_ = false;                       ///< by a switch were they begun, not by start or stop
    ControlArray<Label, MasterInputs> masterNumbers_;  ///< of the rows, for people who talk about them
    ControlArray<Label, AlderInputs> inputNumbers_;
    ControlArray<Label, AlderOutputs> outputNumbers_;
};

}  // namespace kestrel

// In/Out test: the inputs of three boards as lamps, and in test mode every output of the two slave boards as a switch.
// A switch only asks: it is put back after the click and moves when the board reports that it drives the output.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>

#include "link/presence.h"
#include "pages/common/mailbox.h"
#include "pages/common/table_page.h"
#include "pages/diagnostics/test_orders.h"
#include "platform/displays.h"
#include "platform/switches.h"

namespace kestrel {

class FrmInOut : public TablePage {
  public:
    static constexpr int MasterInputs = 6;
    static constexpr int HotDrinkInputs = 15;
    static constexpr int HotDrinkOutputs = 40;
    static constexpr int SectorOutputs = 48;
    static constexpr int OutputsPerByte = 8;

    FrmInOut();

    Frame Frame1;  ///< the master board
    ControlArray<Label, MasterInputs> Label1;
    ControlArray<Led, MasterInputs> LedX1;

    Frame Frame2;  ///< the hot-drink board
    ControlArray<Label, HotDrinkInputs> Label3;
    ControlArray<Led, 18> iLedRectangleX1;  ///< 13, 15 and 16 stand for nothing and on no place
    ControlArray<Label, HotDrinkOutputs> Label4;
    ControlArray<LedSwitch, HotDrinkOutputs> SwitchLed1;
    Label Label6;  ///< caption of the boiler reading
    SevenSegment iAnalogX1;

    Frame Frame3;  ///< the sector board
    ControlArray<Label, SectorOutputs> Label5;
    ControlArray<LedSwitch, SectorOutputs> SwitchLed3;
    Label Label2;  ///< caption of the compressor
    LedSwitch SwitchLed4;
    Label Label8;  ///< caption of the tank reading
    SevenSegment iAnalogX2;

    CommandButton Command1;  ///< starts and stops the test
    Label Label7;            ///< state of the test
    Timer Timer1{5000};      ///< milliseconds; unlocks the switches when no echo comes

    Layout Arrange() override;
    void Form_Load() override;
    void Form_Unload() override;
    void SLabel_Change(int n, ParamValue value) override;
    void LineInterrupted() override;
    void LineResumed() override { tellMaster(); }

  private:
    void PageCaptions() override;
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
    void setHotDrinkSwitches(bool live);
    void setSectorSwitches(bool live);
    void outputsTold();
    void DisableSwitches() { setSwitches(false); }
    void setSwitches(bool live);
    void masterChanged(int n, ParamValue value);
    void presenceChanged();

    // The hot-drink board.
    void EnableAlderFrame();
    void DisableAlderFrame();
    void setHotDrinkFrame(bool live);
    void hotDrinkChanged(int n, ParamValue value);
    void hotDrinkEcho(int byte, ParamValue value);
    void SwitchLed1_Click(int Index);
    void writeHotDrinkTestTime(unsigned time);
    void rearmHotDrink();

    // The sector board.
    void EnableCedarFrame();
    void DisableCedarFrame();
    void setSectorFrame(bool live);
    void sectorChanged(int n, ParamValue value);
    void sectorReading(ParamValue value);
    void sectorEcho(ParamValue bitByte);
    void SwitchLed3_Click(int Index);
    void SwitchLed4_Click();
    void writeSectorOutput(unsigned group, unsigned bit);
    void writeSectorTestTime(unsigned time);
    void rearmSector();

    /// The unit of the test time is the boards' own.
    static constexpr unsigned TestTimeRun = 60;
    static constexpr unsigned TestTimeStop = 0;
    static constexpr int NoOutput = 65535;
    static constexpr std::size_t OutputByteCount = hot_drink::CommandArgument.size();
    using OutputBytes = std::array<std::uint8_t, OutputByteCount>;

    bool TestActive = false;   ///< the boards are in test mode and the switches work
    bool AlderInTest = false;  ///< as reported; an absent board counts as in test
    bool CedarInTest = false;
    std::array<bool, OutputByteCount>
        PendingEcho{};  ///< by output byte; the last also stands for an output of the sector board
    bool PendingCompressor = false;
    std::bitset<OutputByteCount> hotDrinkTold_;  ///< output bytes whose echo has come: an order writes all of them
    bool groupTold_ = false;                     ///< of the sector board, and then the pair
    bool sectorTold_ = false;
    int LastCedarOutput = NoOutput;  ///< the one output that this page last switched on
    OutputBytes OutputByte{};        ///< of the hot-drink board, from its echo and from the switches
    ParamValue CedarGroup = 0;       ///< latest pair of echoes ...
    ParamValue CedarBit = 0;
    ParamValue CedarGroupNew = 0;  ///< ... and the first of a pair that is not whole yet
    ParamValue CedarOffset = 0;    ///< degrees
    double CedarReading = 0;       ///< whole degrees
    ParamValue AlderPresence = NoPresence;
    ParamValue CedarPresence = NoPresence;
    Handshake AlderHandshake{hot_drink::Command};
    Handshake CedarHandshake{sector::Command};
    bool switchOrdered_ = false;                       ///< by a switch were they begun, not by start or stop
    ControlArray<Label, MasterInputs> masterNumbers_;  ///< of the rows, for people who talk about them
    ControlArray<Label, HotDrinkInputs> inputNumbers_;
    ControlArray<Label, HotDrinkOutputs> outputNumbers_;
    ControlArray<Label, 2> inputHeads_;   ///< of the master and of the hot-drink board
    ControlArray<Label, 2> outputHeads_;  ///< of the hot-drink and of the sector board
};

}  // namespace kestrel

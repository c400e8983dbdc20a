// Options: the machine's general options, the numbers that identify it, and the revisions of its boards.
// Controls are grouped by the board that owns them; a group is live only while its board is there.
#pragma once

#include <array>

#include "catalogue/setting.h"
#include "link/page.h"
#include "platform/switches.h"

namespace kestrel {

class FrmOpzioni : public Page {
  public:
    static constexpr int Toggles = 23;  ///< 6, 7 and 15 to 20 do not exist
    static constexpr int Bars = 4;
    static constexpr int Fields = 4;
    static constexpr int Boards = 3;
    static constexpr int OptionBytes = 5;

    FrmOpzioni();

    ControlArray<Label, Toggles> Label1;  ///< captions of the toggles
    ControlArray<ToggleSwitch, Toggles> SwitchX1;
    ControlArray<Label, 2 * Boards> Label2;  ///< heads "On" and "Off" over the toggles of each board
    ControlArray<ScrollBar, Bars> HScroll1;
    ControlArray<Label, 10> Label6;       ///< captions: 0 to 3 of the bars, 6 to 9 of the fields
    ControlArray<Label, Bars> Label10;    ///< values
    ControlArray<TextBox, Fields> Text1;  ///< machine, location, telephone, customer
    Label Label4;
    SliderSwitch SlswitchX1;        ///< language of the machine's display
    ControlArray<Label, 5> Label5;  ///< 0: decimal point, 4: kind of machine
    SliderSwitch SlswitchX2;        ///< decimals of money
    SliderSwitch SlswitchX4;        ///< kind of machine
    Label Label9;
    SliderSwitch SlswitchX5;  ///< payment system
    ControlArray<Label, Boards> Label7s;
    ControlArray<Label, Boards> Label7;       ///< revisions
    ControlArray<Frame, Boards> boardFrames;  ///< round what belongs to one board; their flags stay as they are

    Layout Arrange() override;
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;
    void SLabel_Change(int n, ParamValue value) override;

  private:
    Layout toggleRows(int board, const std::vector<int>& indexes);
    void PageSubscribe();
    void PageRelease();
    void PageCaptions();
    void SwitchX1_Click(int Index);
    void HScroll1_Change(int Index);
    void Slswitch_PositionChange(const SliderSwitch& slider, const Setting& setting);
    void SlswitchX5_PositionChange();
    void Text1_KeyPress(int Index, int KeyAscii);
    void Text1_LostFocus(int Index);

    /// Each says whether the value is one that the page takes.
    bool takeOptionByte(int n, ParamValue value);
    bool takeScalar(int n, ParamValue value);
    bool takeSingle(int n, ParamValue value);
    bool takePresence(ParamValue& last, ParamValue value, void (FrmOpzioni::*setLive)(bool));
    bool takeFeatures(ParamValue value);
    void showPaymentSystem();
    void endFirstLoad();

    void setMasterLive(bool live);
    void setHotDrinkLive(bool live);
    void setSectorLive(bool live);
    void setDecimalsLive(bool live);
    void setToggleLive(int index, bool live);
    bool paymentFixesDecimals() const;

    bool FirstLoad = true;  ///< not enough values have arrived yet
    int ArrivalCount = 0;
    ParamValue AlderPresence = 0;
    ParamValue CedarPresence = 0;
    ParamValue Features = 0;
    int LanguageIndex = 0;
    std::array<unsigned, OptionBytes> latest_{};  ///< the option bytes as the boards last told them
};

}  // namespace kestrel

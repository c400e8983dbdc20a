// Machine configuration: how many valves, mixers, powders and sugar boxes the hot-drink board drives, and how they
// are paired. Everything stays disabled until a full first set of values has come, and during a change of a count.
#pragma once

#include <array>

#include "link/presence.h"
#include "pages/common/table_page.h"
#include "platform/switches.h"

namespace kestrel {

class FrmConMac : public TablePage {
  public:
    static constexpr int Counts = 3;
    static constexpr int Valves = 4;
    static constexpr int Powders = 5;
    static constexpr int ColdRows = 3;
    static constexpr std::size_t ValveGroups = 4;

    FrmConMac();

    ControlArray<Label, Counts> Labelx1;
    ControlArray<SliderSwitch, Counts> iSwSliderX1;  ///< valves, mixers, powders: the number minus 1
    Label Labelx2;
    SliderSwitch iSwSliderX2;  ///< sugar box, 0 none
    ControlArray<Label, Valves> Labelx3;
    ControlArray<RotarySwitch, Valves> iSwRotaryX3;  ///< mixer of each valve, 0 none
    Frame Frame4, Frame5, Frame6;                    ///< first, second and third powder of each valve
    Frame Frame7;                                    ///< drip time of each valve
    Frame Frame8;                                    ///< double product of each powder
    ControlArray<Label, Valves> Label4, Label5, Label6, Label7;
    ControlArray<ScrollBar, Valves> HScroll4, HScroll5, HScroll6;  ///< powder, 0 none
    ControlArray<ScrollBar, Valves> HScroll7;                      ///< tenths of a second
    ControlArray<Label, Valves> Label4s, Label5s, Label6s, Label7s;
    ControlArray<Label, Powders> Label8;
    ControlArray<ScrollBar, Powders> HScroll8;
    ControlArray<Label, Powders> Label8s;
    Frame frAbb;  ///< pairing of the cold valve, on machines that have a refrigerator
    ControlArray<Label, ColdRows> lblAbb;
    ControlArray<RotarySwitch, ColdRows> isrAbb;

    Layout Arrange() override;
    void Form_Load() override;
    void SLabel_Change(int n, ParamValue value) override;

  private:
    /// One of the four groups that have a row a valve; what it shows and writes stands in a table at the same place.
    struct ValveGroup {
        Frame& frame;
        ControlArray<Label, Valves>& captions;
        ControlArray<ScrollBar, Valves>& bars;
        ControlArray<Label, Valves>& values;
    };

    static std::string numberLabels(int first, int last);
    void designValveGroup(std::size_t g);
    void PageSubscribe() override;
    void PageRelease() override;
    void PageCaptions() override;
    void iSwSliderX1_PositionChange(int Index);
    void iSwSliderX2_PositionChange();
    void iSwRotaryX3_PositionChange(int Index);
    void isrAbb_PositionChange(int Index);
    void ValveBar_Change(std::size_t g, int Index);  ///< HScroll4 to HScroll7
    void HScroll8_Change(int Index);
    Layout arrangeValves();
    void offerCounts();
    bool refuses(int slider, int position) const;

    void takePresence(ParamValue value);
    bool takeHotDrinkValue(int n, ParamValue value);
    bool takeColdMode(int value);
    bool takeCount(int slider, int value);
    bool takeBar(int n, ParamValue value);
    int& countOf(int slider);
    void limitPowderBars();

    void EnableControls();
    void DisableAllControls();
    void EnableColdPairing();
    void DisableColdPairing();
    void setValveLive(int valve, bool live);
    void setPowderLive(int powder, bool live);
    void setColdPairingLive(bool live);

    Frame counts_, valves_;
    ControlArray<Label, static_cast<int>(ValveGroups)> valveHeads_;  ///< captions of Frame4 to Frame7
    const std::array<ValveGroup, ValveGroups> valveGroups_ = {{{Frame4, Label4, HScroll4, Label4s},
                                                               {Frame5, Label5, HScroll5, Label5s},
                                                               {Frame6, Label6, HScroll6, Label6s},
                                                               {Frame7, Label7, HScroll7, Label7s}}};
    int ValveCount = 0;
    int MixerCount = 0;
    int PowderCount = 0;
    int SugarBox = 0;
    int ColdMode = 0;
    ParamValue Presence = NoPresence;
    std::array<int, Valves> MixerOfValve{};
    int ArrivalCount = 0;
    bool FirstLoad = true;        ///< the first full set has not arrived yet
    bool AwaitingEnable = false;  ///< a count was changed and its value is still out
    const int MachineKind = 2;    ///< of the family of machines that this page knows
};

}  // namespace kestrel

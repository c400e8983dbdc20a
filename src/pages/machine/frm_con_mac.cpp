// Machine configuration: the page's life, and what the user's moves write.
// See frm_con_mac.h. What the boards' values do to the page stands in frm_con_mac_values.cpp.
#include "pages/machine/frm_con_mac.h"

#include <algorithm>

#include "language/language_files.h"
#include "link/presence.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/own_words.h"
#include "pages/common/units.h"
#include "pages/machine/frm_con_mac_tables.h"

namespace kestrel {

using namespace conmac;

namespace {

/// A move of a slider beyond the highest position is refused; each row of the slider that applies refuses by itself.
struct MoveLimit {
    int slider;
    bool (*applies)(int machineKind, int coldMode);
    int highest;
};
constexpr std::array<MoveLimit, 9> MoveLimits = {{
    {PowderSlider, [](int kind, int) { return kind == 1 || kind == 2; }, 5},
    {PowderSlider, [](int, int cold) { return cold > 2; }, 7},
    {MixerSlider, [](int kind, int) { return kind == 1; }, 3},
    {MixerSlider, [](int kind, int) { return kind == 2; }, 4},
    {MixerSlider, [](int, int cold) { return cold != 0; }, 5},
    {ValveSlider, [](int kind, int) { return kind == 1; }, 4},
    {ValveSlider, [](int kind, int) { return kind == 2; }, 5},
    {ValveSlider, [](int, int cold) { return cold == 2; }, 6},
    {ValveSlider, [](int, int cold) { return cold == 3; }, 5},
}};

constexpr int TitleLine = 46;
constexpr int SugarBoxLine = 57;
constexpr int MixerLine = 58;
constexpr int DoubleProductLine = 63;

/// The brewing options are subscribed and not shown.
constexpr std::array<ParamRun, 4> FirstSubscriptions = {{
    hot_drink::BrewingOptions,
    {hot_drink::MachineValves, hot_drink::MachineSugarBox},
    hot_drink::CoolingKind,
    hot_drink::ColdValvePairing,
}};
/// The double products are taken for six, so that the first pairing behind them is subscribed once more.
constexpr std::array<ParamRun, 2> LastSubscriptions = {{
    {hot_drink::PowderDouble[0], hot_drink::ColdValvePairing[0]},
    master::HotDrinkPresence,
}};

/// Between the two stand the settings of five valves, of which the page shows four.
void forAllSubscriptions(void (*act)(const ParamRun&)) {
    for (const ParamRun& run : FirstSubscriptions) act(run);
    for (int i = 0; i < hot_drink::ValveMixer.size(); ++i) {
        act(hot_drink::ValveMixer[i]);
        for (const ValveGroupRow& group : ValveGroupRows) act(group.settings[i]);
    }
    for (const ParamRun& run : LastSubscriptions) act(run);
}

/// Of the valves that a cold one can be paired with.
constexpr std::array<const char*, FrmConMac::ColdRows> ColdNumbers = {"1", "3", "4"};

/// Broken into short lines, so that a column of the table need not be as wide as its head.
std::string inShortLines(std::string text) {
    constexpr std::size_t Longest = 12;  // letters, but for longer words
    std::size_t begin = 0;
    for (auto blank = text.find(' '); blank != std::string::npos; blank = text.find(' ', blank + 1)) {
        const std::size_t end = std::min(text.find(' ', blank + 1), text.size());
        if (end - begin <= Longest) continue;
        text[blank] = '\n';
        begin = blank + 1;
    }
    return text;
}

void writeBoth(const Setting& setting, int value) { WriteTwice(setting, static_cast<unsigned>(value)); }

/// What the largest machine of all may have.
int highestPosition(int slider) {
    int highest = 0;
    for (const MoveLimit& limit : MoveLimits)
        if (limit.slider == slider) highest = std::max(highest, limit.highest);
    return highest;
}

}  // namespace

FrmConMac::FrmConMac() : TablePage("FrmConMac", TitleLine, {}) {
    for (int i = 0; i < Counts; ++i) iSwSliderX1[i].PositionLabels = numberLabels(1, highestPosition(i) + 1);
    offerCounts();
    iSwSliderX2.PositionLabels = numberLabels(0, HighestSugarBox);
    for (RotarySwitch& mixer : iSwRotaryX3) mixer.PositionLabels = numberLabels(0, countRow(MixerSlider).highestShown);
    for (RotarySwitch& pairing : isrAbb) pairing.PositionLabels = numberLabels(0, HighestColdPairing);
    for (std::size_t g = 0; g < valveGroups_.size(); ++g) designValveGroup(g);
    for (int i = 0; i < Powders; ++i) {
        Label8[i].Caption = std::to_string(i + 1);
        HScroll8[i].design(0, 9, 1);
        Label8s[i].showsValue("255");
    }
    for (int i = 0; i < ColdRows; ++i)
        lblAbb[i].Caption =
            std::string("abbinamento ev. freddo ") + ColdNumbers[static_cast<std::size_t>(i)] + " elettrovalvola";
    iSwSliderX1.OnPositionChange([this](int Index) { iSwSliderX1_PositionChange(Index); });
    iSwSliderX2.OnPositionChange([this] { iSwSliderX2_PositionChange(); });
    iSwRotaryX3.OnPositionChange([this](int Index) { iSwRotaryX3_PositionChange(Index); });
    isrAbb.OnPositionChange([this](int Index) { isrAbb_PositionChange(Index); });
    HScroll8.OnChange([this](int Index) { HScroll8_Change(Index); });
}

void FrmConMac::designValveGroup(std::size_t g) {
    const ValveGroupRow& row = ValveGroupRows[g];
    const ValveGroup& group = valveGroups_[g];
    for (int i = 0; i < Valves; ++i) {
        group.captions[i].Caption = std::to_string(i + 1);
        group.bars[i].design(0, row.max, row.tenths ? 10 : 1);
        group.bars[i].scale.decimals = row.tenths ? 1 : 0;
        Measure(group.bars[i], row.settings[i]);
        group.values[i].showsValue(row.tenths ? "25.5" : "255");
    }
    group.bars.OnChange([this, g](int Index) { ValveBar_Change(g, Index); });
}

/// What belongs to a valve stands in its row: its mixer, its powders, its drip time.
Layout FrmConMac::arrangeValves() {
    std::vector<Layout> cells = {Gap(), Gap(), Gap()};
    for (Label& head : valveHeads_) cells.insert(cells.end(), {head, Gap()});
    for (int i = 0; i < Valves; ++i) {
        cells.insert(cells.end(), {Labelx3[i], iSwRotaryX3[i], Label4[i]});
        for (const ValveGroup& group : valveGroups_) cells.insert(cells.end(), {group.bars[i], group.values[i]});
    }
    return Group(valves_, Grid(3 + 2 * static_cast<int>(ValveGroups), std::move(cells)));
}

Layout FrmConMac::Arrange() {
    const Layout counts = Grid(
        2, {Labelx1[0], iSwSliderX1[0], Labelx1[1], iSwSliderX1[1], Labelx1[2], iSwSliderX1[2], Labelx2, iSwSliderX2});
    return Column{
        Row{Group(counts_, counts), Group(frAbb, Rows(Indexes(0, ColdRows - 1), lblAbb, isrAbb))},
        arrangeValves(),
        Group(Frame8, Rows(Indexes(0, Powders - 1), Label8, HScroll8, Label8s)),
    };
}

void FrmConMac::Form_Load() {
    TablePage::Form_Load();
    DisableAllControls();
}

void FrmConMac::PageSubscribe() { forAllSubscriptions(Watch); }

void FrmConMac::PageRelease() { forAllSubscriptions(Release); }

void FrmConMac::PageCaptions() {
    TablePage::PageCaptions();
    for (int i = 0; i < Counts; ++i) Labelx1[i].Caption = LanguageTable(countRow(i).line);
    Labelx2.Caption = LanguageTable(SugarBoxLine);
    for (int i = 0; i < Valves; ++i) Labelx3[i].Caption = LanguageTable(MixerLine) + " " + std::to_string(i + 1);
    for (std::size_t g = 0; g < valveGroups_.size(); ++g) {
        valveGroups_[g].frame.Caption = LanguageTable(ValveGroupRows[g].line);
        valveHeads_[static_cast<int>(g)].Caption = inShortLines(valveGroups_[g].frame.Caption);
    }
    valves_.Caption = OwnWord(Own::Valves);
    frAbb.Caption = OwnWord(Own::ColdPairing);
    for (int i = 0; i < ColdRows; ++i)
        lblAbb[i].ToolTip = OwnWord(Own::ColdPairingOf) + " " + ColdNumbers[static_cast<std::size_t>(i)];
    Frame8.Caption = LanguageTable(DoubleProductLine);
}

void FrmConMac::ValveBar_Change(std::size_t g, int Index) {
    if (Updating || Index >= ValveCount) return;
    writeBoth(ValveGroupRows[g].settings[Index], valveGroups_[g].bars[Index].Value);
}

void FrmConMac::HScroll8_Change(int Index) {
    if (Updating || Index >= PowderCount) return;
    writeBoth(hot_drink::PowderDouble[Index], HScroll8[Index].Value);
}

void FrmConMac::iSwRotaryX3_PositionChange(int Index) {
    if (Updating || Index >= ValveCount) return;
    writeBoth(hot_drink::ValveMixer[Index], iSwRotaryX3[Index].Position);
}

void FrmConMac::isrAbb_PositionChange(int Index) {
    if (!Updating) writeBoth(hot_drink::ColdValvePairing[Index], isrAbb[Index].Position);
}

void FrmConMac::iSwSliderX2_PositionChange() {
    if (!Updating) writeBoth(hot_drink::MachineSugarBox, iSwSliderX2.Position);
}

/// What the machine at hand would refuse is not offered.
void FrmConMac::offerCounts() {
    for (int i = 0; i < Counts; ++i) {
        int highest = highestPosition(i);
        while (refuses(i, highest)) --highest;
        iSwSliderX1[i].highestOffered = highest;
    }
}

bool FrmConMac::refuses(int slider, int position) const {
    return std::any_of(MoveLimits.begin(), MoveLimits.end(), [&](const MoveLimit& limit) {
        return limit.slider == slider && limit.applies(MachineKind, ColdMode) && position > limit.highest;
    });
}

void FrmConMac::iSwSliderX1_PositionChange(int Index) {
    if (Updating) return;
    const CountRow& row = countRow(Index);
    const int position = iSwSliderX1[Index].Position;
    DisableAllControls();
    if (refuses(Index, position)) {
        // A record that is read once is read again for a new subscription: the board's value comes back.
        Release(row.setting);
        Watch(row.setting);
        EnableControls();
        return;
    }
    countOf(Index) = position + 1;
    if (Index == PowderSlider) limitPowderBars();
    WriteTwice(row.setting, static_cast<unsigned>(position + 1));
    AwaitingEnable = true;
}

}  // namespace kestrel

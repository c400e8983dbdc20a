// Options: the page's life, and what the user's acts write.
// See frm_opzioni.h. What the boards' values do to the page stands in frm_opzioni_values.cpp.
#include "pages/machine/frm_opzioni.h"

#include "language/language_files.h"
#include "link/identification.h"
#include "link/money.h"
#include "link/presence.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/own_words.h"
#include "pages/machine/frm_opzioni_tables.h"

namespace kestrel {

using namespace opzioni;

namespace {

constexpr int MenuLine = 23;
constexpr int LargeStep = 10;
constexpr int TypedAtMost = 10;

constexpr int DisplayLanguageLine = 280;
constexpr int DecimalsLine = 281;
constexpr int PaymentSystemLine = 275;
constexpr int FirstPaymentLine = 276;
constexpr int PaymentSystems = 4;
constexpr int MachineKindLine = 297;

/// The copies and the softener's cycles are subscribed and not shown.
constexpr std::array<ParamRun, 22> Subscriptions = {{
    {master::SaleOptions, master::PaymentOptions},
    master::DisplayLanguage,
    {master::MachineNumber, master::TelephoneCode},
    master::MachineCustomer,
    master::OverpayTimeout,
    master::HotDrinkPresence,
    master::MoneyDecimals,
    master::SectorPresence,
    master::FirmwareRevision,
    master::MachineState,
    CopyOf(master::OverpayTimeout),
    {hot_drink::BrewingOptions, hot_drink::MachineOptions},
    hot_drink::ServiceSoftener,
    hot_drink::WashingDose,
    hot_drink::CoolingKind,
    {hot_drink::ProbeLowest, hot_drink::ProbeHighest},
    hot_drink::FirmwareRevision,
    CopyOf(hot_drink::WashingDose),
    {CopyOf(hot_drink::ProbeLowest), CopyOf(hot_drink::ProbeHighest)},
    sector::SectorOptions,
    sector::FirmwareRevision,
    CopyOf(sector::SectorOptions),
}};

/// The settings of the probe are never given back: their subscriptions outlive the page.
constexpr bool isGivenBack(const ParamRun& run) {
    constexpr Setting kept = hot_drink::ProbeLowest;
    return run.board != kept.board || (run.first != kept.number && run.first != kept.copy);
}

/// Given back at the end although this page never took them.
constexpr std::array<ParamRun, 4> GivenBackToo = {{
    {CopyOf(master::SaleOptions), CopyOf(master::PaymentOptions)},
    CopyOf(master::DisplayLanguage),
    {CopyOf(hot_drink::BrewingOptions), CopyOf(hot_drink::MachineOptions)},
    CopyOf(hot_drink::ServiceSoftener),
}};

std::string paymentLabels() {
    std::string labels;
    for (int i = 0; i < PaymentSystems; ++i) labels += LanguageTable(FirstPaymentLine + i) + ",";
    return labels;
}

void write(const Setting& setting, int value) { WriteTwice(setting, static_cast<unsigned>(value)); }

}  // namespace

FrmOpzioni::FrmOpzioni() : TablePage("FrmOpzioni", 0, {Subscriptions}) {
    Caption = "Opzioni";
    SlswitchX1.PositionLabels = "0,1,2,3";
    SlswitchX2.PositionLabels = "00000, 0000.0, 000.00, 00.000";
    SlswitchX4.PositionLabels = "0,1";
    for (int i = 0; i < Bars; ++i) {
        HScroll1[i].design(0, BarRows[static_cast<std::size_t>(i)].max, LargeStep);
        Label10[i].showsValue("255");
    }
    for (int i = 0; i < Fields; ++i) DesignNumber(Text1[i], FieldRows[static_cast<std::size_t>(i)].field, TypedAtMost);
    constexpr std::array<const char*, Boards> boardNames = {"Master", "Alder", "Cedar"};
    for (int board = 0; board < Boards; ++board) {
        Label2[2 * board].Caption = "On";
        Label2[2 * board + 1].Caption = "Off";
        Label7s[board].Caption = RevisionRows[static_cast<std::size_t>(board)].caption;
        Label7[board].showsValue("25.5");
        boardFrames[board].Caption = boardNames[static_cast<std::size_t>(board)];
    }
    SwitchX1.OnClick([this](int Index) { SwitchX1_Click(Index); });
    HScroll1.OnChange([this](int Index) { HScroll1_Change(Index); });
    Text1.OnKeyPress([this](int Index, int KeyAscii) { Text1_KeyPress(Index, KeyAscii); });
    Text1.OnLostFocus([this](int Index) { Text1_LostFocus(Index); });
    SlswitchX1.OnPositionChange([this] { Slswitch_PositionChange(SlswitchX1, master::DisplayLanguage); });
    SlswitchX2.OnPositionChange([this] { Slswitch_PositionChange(SlswitchX2, master::MoneyDecimalsSetting); });
    SlswitchX4.OnPositionChange([this] { Slswitch_PositionChange(SlswitchX4, hot_drink::CoolingKind); });
    SlswitchX5.OnPositionChange([this] { SlswitchX5_PositionChange(); });
}

Layout FrmOpzioni::toggleRows(int board, const std::vector<int>& indexes) {
    std::vector<Layout> cells = {Gap(), Row{Label2[2 * board + 1], Label2[2 * board]}};
    for (const int index : indexes) {
        cells.emplace_back(Label1[index]);
        cells.emplace_back(SwitchX1[index]);
    }
    return Grid(2, std::move(cells));
}

Layout FrmOpzioni::Arrange() {
    Layout master = toggleRows(0, {9, 10, 11, 12});
    for (Control* control : std::initializer_list<Control*>{&Label4, &SlswitchX1, &Label5[0], &SlswitchX2, &Label9,
                                                            &SlswitchX5, &Label5[4], &SlswitchX4})
        master.children.emplace_back(*control);
    for (int i = 0; i < Fields; ++i) {
        master.children.emplace_back(Label6[FieldRows[static_cast<std::size_t>(i)].caption]);
        master.children.emplace_back(Text1[i]);
    }
    const auto revision = [this](int board) { return Rows({board}, Label7s, Label7); };
    const Layout bars = Rows(Indexes(0, Bars - 1), Label6, HScroll1, Label10);
    return Row{
        Group(boardFrames[0], Column{master, revision(0)}),
        Group(boardFrames[1], Column{toggleRows(1, {0, 1, 2, 3, 4, 5, 13}), bars, revision(1)}),
        Group(boardFrames[2], Column{toggleRows(2, {8, 14, 21, 22}), revision(2)}),
    };
}

void FrmOpzioni::Form_Load() {
    setMasterLive(false);
    setHotDrinkLive(false);
    setSectorLive(false);
    TablePage::Form_Load();
}

void FrmOpzioni::PageRelease() {
    for (const ParamRun& run : Subscriptions)
        if (isGivenBack(run)) ReleaseAll({&run, 1});
    ReleaseAll(GivenBackToo);
}

void FrmOpzioni::PageCaptions() {
    ToolTip = LanguageTable(MenuLine);
    Label7s[PowerBoard].ToolTip = OwnWord(Own::PowerBoardRevision);
    for (const ToggleRow& row : ToggleRows) Label1[row.index].Caption = LanguageTable(row.line);
    for (int i = 0; i < Bars; ++i) Label6[i].Caption = LanguageTable(BarRows[static_cast<std::size_t>(i)].line);
    for (const FieldRow& row : FieldRows) Label6[row.caption].Caption = LanguageTable(row.line);
    Label4.Caption = LanguageTable(DisplayLanguageLine);
    Label5[0].Caption = LanguageTable(DecimalsLine);
    Label5[4].Caption = LanguageTable(MachineKindLine);
    Label9.Caption = LanguageTable(PaymentSystemLine);
    SlswitchX5.PositionLabels = paymentLabels();
}

void FrmOpzioni::SwitchX1_Click(int Index) {
    if (Updating) return;
    const bool onMaster = Index == CreditTimeout && BoardRevision() == RevisionWithCreditTimeout;
    for (const ToggleRow& own : ToggleRows) {
        if (own.index != Index) continue;
        const ToggleRow& row = onMaster ? CreditTimeoutOnMaster : own;
        const unsigned bit = 1U << row.bit;
        const unsigned others = latest_[row.byte] & ~bit;
        write(ByteSettings[row.byte], static_cast<int>(SwitchX1[Index].Active ? others | bit : others));
    }
}

void FrmOpzioni::HScroll1_Change(int Index) {
    if (!Updating) write(BarRows[static_cast<std::size_t>(Index)].setting, HScroll1[Index].Value);
}

void FrmOpzioni::Slswitch_PositionChange(const SliderSwitch& slider, const Setting& setting) {
    if (!Updating) write(setting, slider.Position);
}

void FrmOpzioni::SlswitchX5_PositionChange() {
    if (Updating) return;
    const int position = SlswitchX5.Position;
    const unsigned others = latest_[PaymentByte] & ~PaymentSystemBits;
    const unsigned system = position > 0 ? 1U << (position - 1) : 0;
    write(ByteSettings[PaymentByte], static_cast<int>(others | system));
}

void FrmOpzioni::Text1_KeyPress(int Index, int KeyAscii) {
    if (Updating || KeyAscii != TextBox::EnterKey) return;
    const NumberField& field = FieldRows[static_cast<std::size_t>(Index)].field;
    const auto value = CommitNumber(Text1[Index], field);
    if (!value) return;
    ParamWrite(field.setting, *value);
}

void FrmOpzioni::Text1_LostFocus(int Index) { Text1_KeyPress(Index, TextBox::EnterKey); }

}  // namespace kestrel

// Options: the page's life, and what the user's acts write.
// See frm_opzioni.h. What the boards' values do to the page stands in frm_opzioni_values.cpp.
#include "pages/machine/frm_opzioni.h"

#include "language/language_files.h"
#include "link/identification.h"
#include "link/money.h"
#include "link/presence.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/machine/frm_opzioni_tables.h"

namespace kestrel {

using namespace opzioni;

namespace {

constexpr int NothingSeen = 255;
constexpr int LargeStep = 10;
constexpr int TypedAtMost = 10;

constexpr int DisplayLanguageLine = 280;
constexpr int DecimalsLine = 281;
constexpr int PaymentSystemLine = 275;
constexpr int FirstPaymentLine = 276;
constexpr int PaymentSystems = 4;
constexpr int MachineKindLine = 297;

/// 355, 1205, 1303, 1445, 1446 and 274 are subscribed and not shown.
constexpr std::array<ParamRun, 22> Subscriptions = {{
    {0, 84, 85},
    {0, 350},
    {0, 356, 358},
    {0, 361},
    {0, 354},
    {0, HotDrinkPresence},
    {0, DecimalsParameter},
    {0, SectorPresence},
    {0, 158},
    {0, FeaturesParameter},
    {0, 355},
    {1, 1298, 1299},
    {1, 1205},
    {1, 1302},
    {1, 1153},
    {1, 1443, 1444},
    {1, 1203},
    {1, 1303},
    {1, 1445, 1446},
    {2, 59},
    {2, 283},
    {2, 274},
}};

/// The settings of the probe are never given back: their subscriptions outlive the page.
constexpr bool isGivenBack(const ParamRun& run) { return BankOf(run.board) != 1 || (run.first != 1443 && run.first != 1445); }

/// Given back at the end although this page never took them.
constexpr std::array<ParamRun, 4> GivenBackToo = {{{0, 86, 87}, {0, 351}, {1, 1300, 1301}, {1, 1211}}};

std::string paymentLabels() {
    std::string labels;
    for (int i = 0; i < PaymentSystems; ++i) labels += LanguageTable(FirstPaymentLine + i) + ",";
    return labels;
}

void write(const OwnSetting& setting, int value) {
    WriteTwice(setting.bank, setting.parameter, setting.shadow, static_cast<unsigned>(value));
}

}  // namespace

FrmOpzioni::FrmOpzioni() : Page("FrmOpzioni") {
    Caption = "Opzioni";
    SlswitchX1.PositionLabels = "0,1,2,3";
    SlswitchX2.PositionLabels = "00000, 0000.0, 000.00, 00.000";
    SlswitchX4.PositionLabels = "0,1";
    for (int i = 0; i < Bars; ++i) {
        HScroll1[i].design(0, BarRows[static_cast<std::size_t>(i)].max, LargeStep);
        Label10[i].showsValue("255");
    }
    for (TextBox& box : Text1) box.maxLength = TypedAtMost;
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
    SlswitchX1.OnPositionChange([this] { Slswitch_PositionChange(SlswitchX1, DisplayLanguage); });
    SlswitchX2.OnPositionChange([this] { Slswitch_PositionChange(SlswitchX2, Decimals); });
    SlswitchX4.OnPositionChange([this] { Slswitch_PositionChange(SlswitchX4, CoolingKind); });
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
    FirstLoad = true;
    ArrivalCount = 0;
    setMasterLive(false);
    setAlderLive(false);
    setCedarLive(false);
    AlderPresence = NothingSeen;
    CedarPresence = NothingSeen;
    Features = NothingSeen;
    LanguageIndex = 0;
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
}

void FrmOpzioni::Form_Activate() { PageCaptions(); }

void FrmOpzioni::Form_Unload() { PageRelease(); }

void FrmOpzioni::PageSubscribe() { WatchAll(Subscriptions); }

void FrmOpzioni::PageRelease() {
    for (const ParamRun& run : Subscriptions)
        if (isGivenBack(run)) ReleaseAll({&run, 1});
    ReleaseAll(GivenBackToo);
}

void FrmOpzioni::PageCaptions() {
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

void FrmOpzioni::Slswitch_PositionChange(const SliderSwitch& slider, const OwnSetting& setting) {
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
    CurrentBank = 0;
    ParamWrite(field.parameter, *value);
}

void FrmOpzioni::Text1_LostFocus(int Index) { Text1_KeyPress(Index, TextBox::EnterKey); }

}  // namespace kestrel

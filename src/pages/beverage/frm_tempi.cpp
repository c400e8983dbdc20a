// Times: the machine-wide times of the brewing group and of the water circuit.
#include "pages/beverage/frm_tempi.h"

#include <array>

#include "language/language_files.h"
#include "link/presence.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"

namespace kestrel {

namespace {

struct BarRow {
    int line;  ///< of its caption
    int max;   ///< tenths of a second
    int bank;
    int read;
    int shadow;  ///< written after the first, never shown
};

/// Bar 4 writes its own parameter twice: its shadow 1152 is subscribed but left as it is.
constexpr std::array<BarRow, FrmTempi::Bars> BarRows = {{
    {95, 255, 1, 1143, 1148},
    {96, 255, 1, 1144, 1149},
    {97, 255, 1, 1145, 1150},
    {98, 255, 1, 1146, 1151},
    {99, 100, 1, 1147, 1147},
    {103, 250, 2, 58, 273},
    {100, 255, 1, 1439, 1440},
    {101, 60, 1, 1441, 1442},
}};

constexpr std::array<ParamRun, 10> Subscriptions = {{
    {1, 1143, 1147},
    {1, 1439},
    {1, 1441},
    {1, 1148, 1152},
    {1, 1440},
    {1, 1442},
    {2, 58},
    {2, 273},
    {0, HotDrinkPresence},
    {0, SectorPresence},
}};

constexpr int LargeStep = 10;
constexpr int TitleLine = 4;
constexpr int Frame1Line = 94;
constexpr int Frame2Line = 102;

}  // namespace

FrmTempi::FrmTempi() : Page("FrmTempi") {
    for (int i = 0; i < Bars; ++i) {
        HScroll1[i].design(0, BarRows[static_cast<std::size_t>(i)].max, LargeStep);
        HScroll1[i].scale.decimals = 1;
        Label1[i].showsValue("25.5");
    }
    HScroll1.OnChange([this](int Index) { HScroll1_Change(Index); });
}

Layout FrmTempi::Arrange() {
    return Column{
        Group(Frame1, Rows({0, 1, 2, 3, 4, 6, 7}, Label2, HScroll1, Label1)),
        Group(Frame2, Rows({5}, Label2, HScroll1, Label1)),
    };
}

void FrmTempi::Form_Load() {
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
}

void FrmTempi::Form_Activate() { PageCaptions(); }

void FrmTempi::Form_Unload() { PageRelease(); }

void FrmTempi::PageSubscribe() { WatchAll(Subscriptions); }

void FrmTempi::PageRelease() { ReleaseAll(Subscriptions); }

void FrmTempi::PageCaptions() {
    Caption = LanguageTable(TitleLine);
    Frame1.Caption = LanguageTable(Frame1Line);
    Frame2.Caption = LanguageTable(Frame2Line);
    for (int i = 0; i < Bars; ++i) Label2[i].Caption = LanguageTable(BarRows[static_cast<std::size_t>(i)].line);
}

void FrmTempi::HScroll1_Change(int Index) {
    if (Updating) return;
    const BarRow& row = BarRows[static_cast<std::size_t>(Index)];
    WriteTwice(row.bank, row.read, row.shadow, static_cast<unsigned>(HScroll1[Index].Value.get()));
}

void FrmTempi::setGroup(Frame& frame, bool live) {
    frame.Enabled = live;
    for (int i = 0; i < Bars; ++i) {
        if (HScroll1[i].frame() != &frame) continue;
        Label1[i].Enabled = live;
        Label2[i].Enabled = live;
        HScroll1[i].Enabled = live;
    }
}

void FrmTempi::SLabel_Change(int n, ParamValue value) {
    Updating = true;
    if (CurrentBank == 0) {
        if (n == HotDrinkPresence) setGroup(Frame1, SaysPresent(value));
        if (n == SectorPresence) setGroup(Frame2, SaysPresent(value));
    } else {
        for (int i = 0; i < Bars; ++i) {
            const BarRow& row = BarRows[static_cast<std::size_t>(i)];
            if (row.bank == CurrentBank && row.read == n) SetBarTenths(Label1[i], HScroll1[i], value);
        }
    }
    Updating = false;
}

}  // namespace kestrel

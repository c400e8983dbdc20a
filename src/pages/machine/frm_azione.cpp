// Preventive maintenance: counts of cycles until service.
#include "pages/machine/frm_azione.h"

#include <array>

#include "language/language_files.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/offset_bar.h"

namespace kestrel {

namespace {

constexpr int Bank = 1;
constexpr int FirstCount = 1204;   ///< row i is parameter 1204 + i ...
constexpr int FirstShadow = 1210;  ///< ... and its shadow 1210 + i, subscribed but not shown
constexpr int FirstCaption = 203;  ///< language line of row 0
constexpr int TitleLine = 13;

constexpr std::array<ParamRun, 2> Subscriptions = {{
    {Bank, FirstCount, FirstCount + FrmAzione::Counts - 1},
    {Bank, FirstShadow, FirstShadow + FrmAzione::Counts - 1},
}};

}  // namespace

FrmAzione::FrmAzione() : Page("FrmAzione") {
    for (int i = 0; i < Counts; ++i) {
        DesignOffsetBar(HScroll1[i]);
        Label10[i].showsValue("65535");
    }
    HScroll1.OnChange([this](int Index) { HScroll1_Change(Index); });
}

Layout FrmAzione::Arrange() { return Rows(Indexes(0, Counts - 1), Label6, HScroll1, Label10); }

void FrmAzione::Form_Load() {
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
}

void FrmAzione::Form_Activate() { PageCaptions(); }

void FrmAzione::Form_Unload() { PageRelease(); }

void FrmAzione::PageSubscribe() { WatchAll(Subscriptions); }

void FrmAzione::PageRelease() { ReleaseAll(Subscriptions); }

void FrmAzione::PageCaptions() {
    Caption = LanguageTable(TitleLine);
    for (int i = 0; i < Counts; ++i) Label6[i].Caption = LanguageTable(FirstCaption + i);
}

void FrmAzione::HScroll1_Change(int Index) {
    if (Updating) return;
    WriteTwice(Bank, FirstCount + Index, FirstShadow + Index, RawOfBar(HScroll1[Index].Value));
}

void FrmAzione::SLabel_Change(int n, ParamValue value) {
    Updating = true;
    const int row = n - FirstCount;
    if (CurrentBank == Bank && row >= 0 && row < Counts)
        Label10[row].Caption = std::to_string(SetOffsetBar(HScroll1[row], value));
    Updating = false;
}

}  // namespace kestrel

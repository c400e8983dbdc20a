// Preventive maintenance: counts of cycles until service.
#include "pages/machine/frm_azione.h"

#include <array>

#include "language/language_files.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/offset_bar.h"

namespace kestrel {

namespace {

/// By row.
constexpr std::array<Setting, FrmAzione::Counts> CountSettings = {
    hot_drink::ServiceValves,     hot_drink::ServiceSoftener, hot_drink::ServiceBoiler,
    hot_drink::ServiceSanitation, hot_drink::ServiceFilter1,  hot_drink::ServiceFilter2,
};
constexpr int FirstCaption = 203;  ///< language line of row 0
constexpr int TitleLine = 13;

/// The copies are not shown.
constexpr std::array<ParamRun, 2> Subscriptions = {{
    {CountSettings.front(), CountSettings.back()},
    {CopyOf(CountSettings.front()), CopyOf(CountSettings.back())},
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
    WriteTwice(CountSettings[static_cast<std::size_t>(Index)], RawOfBar(HScroll1[Index].Value));
}

void FrmAzione::SLabel_Change(int n, ParamValue value) {
    Updating = true;
    for (int row = 0; row < Counts; ++row)
        if (Arrived(n, CountSettings[static_cast<std::size_t>(row)]))
            Label10[row].Caption = std::to_string(SetOffsetBar(HScroll1[row], value));
    Updating = false;
}

}  // namespace kestrel

// Preventive maintenance: counts of cycles until service.
#include "pages/machine/frm_azione.h"

#include <array>

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

FrmAzione::FrmAzione() : TablePage("FrmAzione", TitleLine, {Subscriptions}) {
    for (int i = 0; i < Counts; ++i)
        offsetBar(FirstCaption + i, CountSettings[static_cast<std::size_t>(i)], Label6[i], HScroll1[i], Label10[i]);
}

Layout FrmAzione::Arrange() { return Rows(Indexes(0, Counts - 1), Label6, HScroll1, Label10); }

}  // namespace kestrel

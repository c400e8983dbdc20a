// Clock, calendar and daily time bands.
#include "pages/climate/frm_orologio.h"

#include <array>

#include "language/language_files.h"
#include "language/window_texts.h"
#include "link/dates.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/own_words.h"
#include "platform/platform.h"

namespace kestrel {

namespace {

struct BandRow {
    int line;    ///< of its caption; the number follows
    int number;  ///< of the band in its group
    Setting hours;
    Setting minutes;
};

/// The order of the parameters is not that of the page. Their copies are never subscribed.
constexpr std::array<BandRow, FrmOrologio::BandCount> BandRows = {{
    {327, 1, master::BandOn1StartHour, master::BandOn1StartMinute},
    {328, 1, master::BandOn1EndHour, master::BandOn1EndMinute},
    {327, 2, master::BandOn2StartHour, master::BandOn2StartMinute},
    {328, 2, master::BandOn2EndHour, master::BandOn2EndMinute},
    {329, 1, master::BandWash1Hour, master::BandWash1Minute},
    {329, 2, master::BandWash2Hour, master::BandWash2Minute},
    {327, 1, master::BandDiscount1StartHour, master::BandDiscount1StartMinute},
    {328, 1, master::BandDiscount1EndHour, master::BandDiscount1EndMinute},
    {327, 2, master::BandDiscount2StartHour, master::BandDiscount2StartMinute},
    {328, 2, master::BandDiscount2EndHour, master::BandDiscount2EndMinute},
}};

struct SettingRow {
    const char* caption;
    int min;
    int max;
    Setting setting;
};
constexpr std::array<SettingRow, 2> TimeRows = {
    {{"ore", 0, 23, master::ClockSetHour}, {"minuti", 0, 59, master::ClockSetMinute}}};
constexpr std::array<SettingRow, 3> DateRows = {{{"giorno", 1, 31, master::ClockSetDay},
                                                 {"mese", 1, 12, master::ClockSetMonth},
                                                 {"anno", 0, 99, master::ClockSetYear}}};

constexpr ParamValue HasClock = 4;  ///< of the machine's state

constexpr std::array<ParamRun, 8> Subscriptions = {{
    {master::BandOn1StartMinute, master::BandDiscount2EndHour},
    {master::ClockSetHour, master::ClockSetYear},
    master::ClockHour,
    master::ClockMinute,
    master::MachineState,
    master::ClockDay,
    master::ClockMonth,
    master::ClockYear,
}};

constexpr int Century = 2000;
constexpr int DayInstead = 12;   ///< shown for a day that no month has
constexpr int MonthInstead = 8;  ///< shown for a month that no year has
constexpr int LargeStep = 5;

constexpr int TitleLine = 29;
constexpr int Frame1Line = 323;
constexpr int Frame2Line = 324;
constexpr int Frame3Line = 325;
constexpr int Frame4Line = 326;
constexpr int SetToComputerLine = 718;

template <std::size_t N>
const SettingRow& rowOf(const std::array<SettingRow, N>& rows, int index) {
    return rows[static_cast<std::size_t>(index)];
}

const Setting& bandSetting(int bar) {
    const BandRow& band = BandRows[static_cast<std::size_t>(bar / 2)];
    return bar % 2 == 0 ? band.hours : band.minutes;
}

template <std::size_t N>
void design(const std::array<SettingRow, N>& rows, ControlArray<Label, N>& captions, ControlArray<ScrollBar, N>& bars,
            ControlArray<Label, N>& values) {
    for (int i = 0; i < static_cast<int>(N); ++i) {
        captions[i].Caption = rowOf(rows, i).caption;
        bars[i].design(rowOf(rows, i).min, rowOf(rows, i).max, LargeStep);
        values[i].showsValue("255");
    }
}

unsigned positionOf(const ScrollBar& bar) { return static_cast<unsigned>(bar.Value.get()); }

}  // namespace

FrmOrologio::FrmOrologio() : TablePage("FrmOrologio", TitleLine, {Subscriptions}) {
    design(TimeRows, Label41, HScroll2, Label4);
    design(DateRows, Label5s, HScroll5, Label5);
    Label6.showsValue("00/00/0000");
    for (int i = 0; i < BandBars; ++i) {
        const SettingRow& kind = rowOf(TimeRows, i % 2);
        HScroll1[i].design(kind.min, kind.max, LargeStep);
        Label1[i].showsValue("255");
        Label3[i].role = Label::Role::Unit;
        Label3[i].Caption = kind.caption;
        HScroll1[i].isTypedAlone = true;
    }
    for (int band = 0; band < BandCount; ++band) bandTime(band).stand(HScroll1[2 * band], HScroll1[2 * band + 1]);
    ClockTime.stand(HScroll2[0], HScroll2[1]);
    ClockTimeCaption.Caption = "hh:mm";
    SetToComputer.OnClick([this] { SetToComputer_Click(); });
    HScroll1.OnChange([this](int Index) { HScroll1_Change(Index); });
    HScroll2.OnChange([this](int Index) { HScroll2_Change(Index); });
    HScroll5.OnChange([this](int Index) { HScroll5_Change(Index); });
}

Layout FrmOrologio::bandRows(int first, int last) {
    std::vector<Layout> cells;
    for (int band = first; band <= last; ++band) {
        cells.emplace_back(Label2[band]);
        cells.push_back(Row{bandTime(band).Bar, bandTime(band).Figure});  // apart, as the unit behind is not its own
        for (const int bar : {2 * band, 2 * band + 1})
            for (Control* control : {static_cast<Control*>(&HScroll1[bar]), static_cast<Control*>(&Label1[bar]),
                                     static_cast<Control*>(&Label3[bar])})
                cells.emplace_back(*control);
    }
    return Grid(8, std::move(cells));
}

Layout FrmOrologio::Arrange() {
    const Layout clock = Column{
        Row{iSevenSegmentClockX1, Label6, Gap(), ClockTimeCaption, ClockTime.Bar, ClockTime.Figure},
        Grid(3, {Label41[0], HScroll2[0], Label4[0], Label41[1], HScroll2[1], Label4[1],  //
                 Label5s[0], HScroll5[0], Label5[0], Label5s[1], HScroll5[1], Label5[1],  //
                 Label5s[2], HScroll5[2], Label5[2]}),
        Row{SetToComputer, Gap()},
    };
    return Row{
        Column{Group(Frame1, clock), Group(Frame3, bandRows(4, 5))},
        Column{Group(Frame2, bandRows(0, 3)), Group(Frame4, bandRows(6, 9))},
    };
}

void FrmOrologio::PageCaptions() {
    TablePage::PageCaptions();
    iSevenSegmentClockX1.ToolTip = Caption;
    SetToComputer.Caption = WindowText(SetToComputerLine, "Set to this computer's time");
    explainCaptions();
    Frame1.Caption = LanguageTable(Frame1Line);
    Frame2.Caption = LanguageTable(Frame2Line);
    Frame3.Caption = LanguageTable(Frame3Line);
    Frame4.Caption = LanguageTable(Frame4Line);
    for (int i = 0; i < BandCount; ++i) {
        const BandRow& band = BandRows[static_cast<std::size_t>(i)];
        Label2[i].Caption = LanguageTable(band.line) + " " + std::to_string(band.number);
    }
}

/// These captions are Italian in every language.
void FrmOrologio::explainCaptions() {
    for (int i = 0; i < Label41.size(); ++i) Label41[i].ToolTip = OwnWord(i == 0 ? Own::Hours : Own::Minutes);
    constexpr std::array<Own, 3> dateParts = {Own::DayOfMonth, Own::Month, Own::Year};
    for (int i = 0; i < Label5s.size(); ++i) Label5s[i].ToolTip = OwnWord(dateParts[static_cast<std::size_t>(i)]);
    for (int i = 0; i < BandBars; ++i) Label3[i].ToolTip = OwnWord(i % 2 == 0 ? Own::Hours : Own::Minutes);
}

void FrmOrologio::HScroll1_Change(int Index) {
    if (Updating) return;
    WriteTwice(bandSetting(Index), positionOf(HScroll1[Index]));
}

void FrmOrologio::HScroll2_Change(int Index) {
    if (Updating) return;
    ParamWrite(rowOf(TimeRows, Index).setting, positionOf(HScroll2[Index]));
    Editing = true;
}

void FrmOrologio::HScroll5_Change(int Index) {
    if (Updating) return;
    ParamWrite(rowOf(DateRows, Index).setting, positionOf(HScroll5[Index]));
    Editing = true;
}

void FrmOrologio::SetToComputer_Click() {
    const LocalTime now = platform().localTime();
    setPart(HScroll2[0], TimeRows[0].setting, now.hour);
    setPart(HScroll2[1], TimeRows[1].setting, now.minute);
    setPart(HScroll5[0], DateRows[0].setting, now.day);
    setPart(HScroll5[1], DateRows[1].setting, now.month);
    setPart(HScroll5[2], DateRows[2].setting, now.year - Century);
}

void FrmOrologio::setPart(ScrollBar& bar, const Setting& setting, int value) {
    if (bar.unread()) return;
    if (bar.Value != value) return bar.UserMove(value);
    ParamWrite(setting, static_cast<unsigned>(value));
    Editing = true;
}

void FrmOrologio::enableClock(bool live) {
    Frame1.Enabled = live;
    SetToComputer.Enabled = live;
    ClockTime.Bar.Enabled = live;
    ClockTime.Figure.Enabled = live;
    ClockTimeCaption.Enabled = live;
    iSevenSegmentClockX1.Enabled = live;
    Label6.Enabled = live;
    for (int i = 0; i < HScroll2.size(); ++i) {
        HScroll2[i].Enabled = live;
        Label4[i].Enabled = live;
        Label41[i].Enabled = live;
    }
    for (int i = 0; i < HScroll5.size(); ++i) {
        HScroll5[i].Enabled = live;
        Label5[i].Enabled = live;
        Label5s[i].Enabled = live;
    }
}

void FrmOrologio::showSetting(int n, ParamValue value) {
    for (int i = 0; i < HScroll2.size(); ++i)
        if (Arrived(n, rowOf(TimeRows, i).setting)) SetBar(Label4[i], HScroll2[i], value);
    for (int i = 0; i < HScroll5.size(); ++i)
        if (Arrived(n, rowOf(DateRows, i).setting)) SetBar(Label5[i], HScroll5[i], value);
    ClockTime.follow();
    Editing = false;
}

void FrmOrologio::showTime() {
    if (ClockHours > 23 || ClockMinutes > 59) return;
    iSevenSegmentClockX1.Minutes = static_cast<int>(ClockHours * 60 + ClockMinutes);
    if (!FirstTime) return;
    SetBar(Label4[0], HScroll2[0], ClockHours);
    SetBar(Label4[1], HScroll2[1], ClockMinutes);
    ClockTime.follow();
    FirstTime = false;
}

void FrmOrologio::showDate() {
    for (const Setting& part : {master::ClockDay, master::ClockMonth, master::ClockYear})
        if (!ParamIsFresh(part)) return;
    // Fresh for another page perhaps, and not told to this one yet.
    if (Day == 0 || Month == 0 || Year == 0) return;
    Label6.Caption = FormatDayNumber(DayNumber(Day, Month, Year));
    if (!FirstDate) return;
    SetBar(Label5[0], HScroll5[0], Day);
    SetBar(Label5[1], HScroll5[1], Month);
    SetBar(Label5[2], HScroll5[2], Year - Century);
    FirstDate = false;
}

void FrmOrologio::takeClock(int n, ParamValue value) {
    const int number = static_cast<int>(value);
    switch (n) {
        case master::ClockHour.number:
            ClockHours = value;
            return showTime();
        case master::ClockMinute.number:
            ClockMinutes = value;
            return showTime();
        case master::ClockDay.number:
            Day = number < 1 || number > 31 ? DayInstead : number;
            return showDate();
        case master::ClockMonth.number:
            Month = number < 1 || number > 12 ? MonthInstead : number;
            return showDate();
        case master::ClockYear.number:
            Year = Century + number;
            return showDate();
        default:
            return;
    }
}

void FrmOrologio::SLabel_Change(int n, ParamValue value) {
    if (!IsCurrent(Board::Master)) return;
    for (int i = 0; i < BandBars; ++i)
        if (Arrived(n, bandSetting(i))) {
            SetBar(Label1[i], HScroll1[i], value);
            bandTime(i / 2).follow();
        }
    if (Arrived(n, master::MachineState)) {
        Features = value;
        enableClock((Features & HasClock) != 0);
    }
    if ((Features & HasClock) != 0) {
        if (n >= TimeRows.front().setting.number && n <= DateRows.back().setting.number) showSetting(n, value);
        takeClock(n, value);
    }
}

}  // namespace kestrel

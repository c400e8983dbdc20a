// Clock, calendar and daily time bands.
#include "pages/climate/frm_orologio.h"

#include <array>

#include "language/language_files.h"
#include "link/dates.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"

namespace kestrel {

namespace {

struct BandRow {
    int line;     ///< of its caption; the number follows
    int number;   ///< of the band in its group
    int hours;    ///< parameter of the hours
    int minutes;  ///< and of the minutes
};

/// The order of the parameters is not that of the page.
constexpr std::array<BandRow, FrmOrologio::BandCount> BandRows = {{
    {327, 1, 200, 199},
    {328, 1, 204, 203},
    {327, 2, 202, 201},
    {328, 2, 206, 205},
    {329, 1, 208, 207},
    {329, 2, 210, 209},
    {327, 1, 212, 211},
    {328, 1, 216, 215},
    {327, 2, 214, 213},
    {328, 2, 218, 217},
}};
constexpr int ShadowDistance = 20;  ///< from a band's parameter to its shadow, which is never subscribed

struct SettingRow {
    const char* caption;
    int min;
    int max;
    int parameter;
};
constexpr std::array<SettingRow, 2> TimeRows = {{{"ore", 0, 23, 239}, {"minuti", 0, 59, 240}}};
constexpr std::array<SettingRow, 3> DateRows = {{{"giorno", 1, 31, 241}, {"mese", 1, 12, 242}, {"anno", 0, 99, 243}}};

constexpr int ClockMinute = 244;
constexpr int ClockHour = 245;
constexpr int ClockDay = 246;
constexpr int ClockMonth = 247;
constexpr int ClockYear = 248;
constexpr int FeaturesParameter = 7;
constexpr ParamValue HasClock = 4;

constexpr std::array<ParamRun, 8> Subscriptions = {{
    {0, 199, 218},
    {0, 239, 243},
    {0, ClockHour},
    {0, ClockMinute},
    {0, FeaturesParameter},
    {0, ClockDay},
    {0, ClockMonth},
    {0, ClockYear},
}};

constexpr int Century = 2000;
constexpr int DayInstead = 12;   ///< shown for a day that no month has
constexpr int MonthInstead = 8;  ///< shown for a month that no year has
constexpr int NoTime = 255;
constexpr int LargeStep = 5;

constexpr int TitleLine = 29;
constexpr int Frame1Line = 323;
constexpr int Frame2Line = 324;
constexpr int Frame3Line = 325;
constexpr int Frame4Line = 326;

template <std::size_t N>
const SettingRow& rowOf(const std::array<SettingRow, N>& rows, int index) {
    return rows[static_cast<std::size_t>(index)];
}

int bandParameter(int bar) {
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

FrmOrologio::FrmOrologio() : Page("FrmOrologio") {
    design(TimeRows, Label41, HScroll2, Label4);
    design(DateRows, Label5s, HScroll5, Label5);
    Label6.showsValue("00/00/0000");
    for (int i = 0; i < BandBars; ++i) {
        const SettingRow& kind = rowOf(TimeRows, i % 2);
        HScroll1[i].design(kind.min, kind.max, LargeStep);
        Label1[i].showsValue("255");
        Label3[i].role = Label::Role::Unit;
        Label3[i].Caption = kind.caption;
    }
    HScroll1.OnChange([this](int Index) { HScroll1_Change(Index); });
    HScroll2.OnChange([this](int Index) { HScroll2_Change(Index); });
    HScroll5.OnChange([this](int Index) { HScroll5_Change(Index); });
}

Layout FrmOrologio::bandRows(int first, int last) {
    std::vector<Layout> cells;
    for (int band = first; band <= last; ++band) {
        cells.emplace_back(Label2[band]);
        for (const int bar : {2 * band, 2 * band + 1})
            for (Control* control : {static_cast<Control*>(&HScroll1[bar]), static_cast<Control*>(&Label1[bar]),
                                     static_cast<Control*>(&Label3[bar])})
                cells.emplace_back(*control);
    }
    return Grid(7, std::move(cells));
}

Layout FrmOrologio::Arrange() {
    const Layout clock = Column{
        Row{iSevenSegmentClockX1, Label6},
        Grid(3, {Label41[0], HScroll2[0], Label4[0], Label41[1], HScroll2[1], Label4[1],  //
                 Label5s[0], HScroll5[0], Label5[0], Label5s[1], HScroll5[1], Label5[1],  //
                 Label5s[2], HScroll5[2], Label5[2]}),
    };
    return Row{
        Column{Group(Frame1, clock), Group(Frame3, bandRows(4, 5))},
        Column{Group(Frame2, bandRows(0, 3)), Group(Frame4, bandRows(6, 9))},
    };
}

void FrmOrologio::Form_Load() {
    ClockHours = NoTime;
    ClockMinutes = NoTime;
    FirstTime = true;
    FirstDate = true;
    Editing = false;
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
}

void FrmOrologio::Form_Activate() { PageCaptions(); }

void FrmOrologio::Form_Unload() { PageRelease(); }

void FrmOrologio::PageSubscribe() { WatchAll(Subscriptions); }

void FrmOrologio::PageRelease() { ReleaseAll(Subscriptions); }

void FrmOrologio::PageCaptions() {
    Caption = LanguageTable(TitleLine);
    iSevenSegmentClockX1.ToolTip = Caption;
    Frame1.Caption = LanguageTable(Frame1Line);
    Frame2.Caption = LanguageTable(Frame2Line);
    Frame3.Caption = LanguageTable(Frame3Line);
    Frame4.Caption = LanguageTable(Frame4Line);
    for (int i = 0; i < BandCount; ++i) {
        const BandRow& band = BandRows[static_cast<std::size_t>(i)];
        Label2[i].Caption = LanguageTable(band.line) + " " + std::to_string(band.number);
    }
}

void FrmOrologio::HScroll1_Change(int Index) {
    if (Updating) return;
    const int parameter = bandParameter(Index);
    WriteTwice(0, parameter, parameter + ShadowDistance, positionOf(HScroll1[Index]));
}

void FrmOrologio::HScroll2_Change(int Index) {
    if (Updating) return;
    CurrentBank = 0;
    ParamWrite(rowOf(TimeRows, Index).parameter, positionOf(HScroll2[Index]));
    Editing = true;
}

void FrmOrologio::HScroll5_Change(int Index) {
    if (Updating) return;
    CurrentBank = 0;
    ParamWrite(rowOf(DateRows, Index).parameter, positionOf(HScroll5[Index]));
    Editing = true;
}

void FrmOrologio::enableClock(bool live) {
    Frame1.Enabled = live;
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
        if (rowOf(TimeRows, i).parameter == n) SetBar(Label4[i], HScroll2[i], value);
    for (int i = 0; i < HScroll5.size(); ++i)
        if (rowOf(DateRows, i).parameter == n) SetBar(Label5[i], HScroll5[i], value);
    Editing = false;
}

void FrmOrologio::showTime() {
    if (ClockHours > 23 || ClockMinutes > 59) return;
    iSevenSegmentClockX1.Minutes = static_cast<int>(ClockHours * 60 + ClockMinutes);
    if (!FirstTime) return;
    SetBar(Label4[0], HScroll2[0], ClockHours);
    SetBar(Label4[1], HScroll2[1], ClockMinutes);
    FirstTime = false;
}

void FrmOrologio::showDate() {
    for (const int n : {ClockDay, ClockMonth, ClockYear})
        if (!ParamIsFresh(n, 0)) return;
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
        case ClockHour:
            ClockHours = value;
            return showTime();
        case ClockMinute:
            ClockMinutes = value;
            return showTime();
        case ClockDay:
            Day = number < 1 || number > 31 ? DayInstead : number;
            return showDate();
        case ClockMonth:
            Month = number < 1 || number > 12 ? MonthInstead : number;
            return showDate();
        case ClockYear:
            Year = Century + number;
            return showDate();
        default:
            return;
    }
}

void FrmOrologio::SLabel_Change(int n, ParamValue value) {
    if (CurrentBank != 0) return;
    Updating = true;
    for (int i = 0; i < BandBars; ++i)
        if (bandParameter(i) == n) SetBar(Label1[i], HScroll1[i], value);
    if (n == FeaturesParameter) {
        Features = value;
        enableClock((Features & HasClock) != 0);
    }
    if ((Features & HasClock) != 0) {
        if (n >= TimeRows.front().parameter && n <= DateRows.back().parameter) showSetting(n, value);
        takeClock(n, value);
    }
    Updating = false;
}

}  // namespace kestrel

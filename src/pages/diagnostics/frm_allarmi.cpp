// Alarms: the last ten that the master has stored.
#include "pages/diagnostics/frm_allarmi.h"

#include <algorithm>
#include <chrono>

#include "language/language_files.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/int16.h"
#include "pages/common/own_words.h"
#include "platform/platform.h"

namespace kestrel {

namespace {

constexpr int ValuesToRead = 1 + master::AlarmRing.size();

constexpr int Slots = 10;
/// A pointer of 10 passes, though it points beyond the ring: reading there is a run-time error.
constexpr int HighestPointer = 10;
constexpr int HighestCode = 137;

enum Field { Minutes, Hours, Day, Month, Year, Code, FieldCount };

constexpr std::array<ParamRun, 2> Subscriptions = {{master::AlarmNewest, master::AlarmRing}};

constexpr int TitleLine = 35;
constexpr int HeadsLine = 470;
constexpr int Heads = 4;
constexpr int Label1Line = 474;
constexpr int AlarmLine = 478;

constexpr int HighestDay = 31;
constexpr int HighestMonth = 12;
constexpr int FirstYear = 2000;
// Ages from which on weeks, months and years are told.
constexpr int DaysInWeeks = 28;
constexpr int DaysInMonths = 90;
constexpr int DaysInYears = 730;
constexpr const char* NoDate = "00/00/00";

/// A day or month that no calendar has, or a day that its month has not.
bool isNoDate(int day, int month, int year) {
    if (day < 1 || day > HighestDay || month < 1 || month > HighestMonth) return true;
    const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                                           std::chrono::day{static_cast<unsigned>(day)}};
    return !date.ok();
}

std::chrono::sys_days dayOf(int day, int month, int year) {
    return std::chrono::year_month_day{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                                       std::chrono::day{static_cast<unsigned>(day)}};
}

std::string dateText(int day, int month, int year) {
    return isNoDate(day, month, year) ? NoDate : platform().shortDate(day, month, year);
}

std::string twoDigits(int value) { return (value < 10 ? "0" : "") + std::to_string(value); }

/// How long ago it was by the clock of this computer; nothing of a date that is none or has yet to come.
std::string ageText(int day, int month, int year) {
    if (isNoDate(day, month, year)) return {};
    const LocalTime now = platform().localTime();
    const auto age = dayOf(now.day, now.month, now.year) - dayOf(day, month, year);
    const auto days = static_cast<int>(age.count());
    if (days < 0) return {};
    if (days < 2) return OwnWord(days == 0 ? Own::Today : Own::Yesterday);
    const auto ago = [](Own unit, int number) {
        std::string text = OwnWord(unit);
        return text.replace(text.find("%1"), 2, std::to_string(number));
    };
    if (days < DaysInWeeks) return ago(Own::DaysAgo, days);
    if (days < DaysInMonths) return ago(Own::WeeksAgo, days / 7);
    if (days < DaysInYears) return ago(Own::MonthsAgo, days / 30);
    return ago(Own::YearsAgo, days / 365);
}

/// A time that no clock shows is given as it stands.
std::string timeText(int hours, int minutes) {
    if (hours < 0 || hours > 23 || minutes < 0 || minutes > 59)
        return std::to_string(hours) + ":" + std::to_string(minutes);
    return twoDigits(hours) + ":" + twoDigits(minutes);
}

}  // namespace

FrmAllarmi::FrmAllarmi() : TablePage("FrmAllarmi", TitleLine, {Subscriptions}) {
    ProgressBar1.Max = ValuesToRead;
    ListView1.namedBy(&Label1);
    copyList.Enabled = false;
    copyList.OnClick([this] { platform().copyText(ListView1.asTable()); });
}

Layout FrmAllarmi::Arrange() { return Column{Row{Label1, ProgressBar1, Gap(), copyList}, ListView1}; }

void FrmAllarmi::PageCaptions() {
    TablePage::PageCaptions();
    Label1.Caption = LanguageTable(Label1Line);
    std::vector<std::string> heads;
    heads.reserve(Heads);
    for (int i = 0; i < Heads; ++i) heads.push_back(LanguageTable(HeadsLine + i));
    heads.push_back(OwnWord(Own::HowLongAgo));
    ListView1.ColumnHeads = heads;
    copyList.Caption = OwnWord(Own::Copy);
}

void FrmAllarmi::SLabel_Change(int n, ParamValue value) {
    if (Arrived(n, master::AlarmNewest)) {
        AlarmPointer = value;
        countArrival();
        if (AllAreFresh(master::AlarmRing)) ShowAlarms();
    } else if (const int offset = ArrivedAt(n, master::AlarmRing); offset >= 0) {
        alarmData_[static_cast<std::size_t>(offset)] = ToInt16(value);
        countArrival();
        if (AllAreFresh(master::AlarmRing) && ParamIsFresh(master::AlarmNewest)) ShowAlarms();
    }
}

/// Counts on after the bar is gone; it never shows again. Before the list is drawn, so that the bar moves even when
/// the ring cannot be.
void FrmAllarmi::countArrival() {
    ++ArrivalCount;
    ProgressBar1.Value = static_cast<int>(std::min<long>(ArrivalCount, ValuesToRead));
    if (ArrivalCount >= ValuesToRead) ProgressBar1.Visible = false;
}

void FrmAllarmi::ShowAlarms() {
    if (AlarmPointer >= Slots) ListView1.Rows = {};
    copyList.Enabled = AlarmPointer < Slots;
    if (AlarmPointer > HighestPointer) return;
    std::vector<std::vector<std::string>> rows;
    ParamValue slot = AlarmPointer;
    for (int number = 1; number <= Slots && AlarmData(FieldCount * slot + Code) <= HighestCode; ++number) {
        rows.push_back(alarmRow(number, slot));
        slot = slot == 0 ? Slots - 1 : slot - 1;
    }
    ListView1.Rows = rows;
}

std::vector<std::string> FrmAllarmi::alarmRow(int number, ParamValue slot) const {
    const auto field = [&](Field which) { return int{AlarmData(FieldCount * slot + which)}; };
    return {std::to_string(number), dateText(field(Day), field(Month), FirstYear + field(Year)),
            timeText(field(Hours), field(Minutes)), LanguageTable(AlarmLine + field(Code)),
            ageText(field(Day), field(Month), FirstYear + field(Year))};
}

std::int16_t FrmAllarmi::AlarmData(ParamValue offset) const {
    if (offset < 0 || offset > RingValues)
        throw RunTimeError(error_number::SubscriptOutOfRange,
                           "Alarm value " + std::to_string(offset) + " is beyond the ring");
    return alarmData_[static_cast<std::size_t>(offset)];
}

}  // namespace kestrel

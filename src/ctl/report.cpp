// kestrelctl report: totals, vends, audit and alarms of the machine.
#include "ctl/report.h"

#include <array>

#include "ctl/connection.h"
#include "ctl/line_work.h"
#include "ctl/words.h"
#include "language/language_files.h"
#include "link/money.h"
#include "link/settings.h"
#include "platform/numbers.h"
#include "platform/platform.h"

namespace kestrel::ctl {

namespace {

/// Lines of the language table that the pages of the window read too.
namespace line {
constexpr int Coins = 20, Alarms = 35, Audit = 44, PermanentTotals = 210, Totals = 211;
constexpr int Takings = 212, Discounts = 213, Overpay = 214, Paid = 215, Free = 216, Jugs = 217, Tests = 218;
constexpr int Beverages = 222, Sectors = 223, Beverage = 224, Sector = 225, FirstPreselection = 227, Coin = 245;
constexpr int FirstAudit = 247, MachineNumber = 286, Date = 471, Time = 472, Description = 473, FirstAlarm = 478;
}  // namespace line

constexpr int AlarmRecord = 6;  ///< values of one alarm: minute, hour, day, month, year, code
constexpr int AlarmSlots = 10;
constexpr std::uint32_t HighestAlarm = 137;
constexpr int SectorsInARow = 8;

struct Line {
    int caption;
    Setting setting;
};
constexpr std::array Clearable = {
    Line{line::Takings, master::TotalTakings}, Line{line::Discounts, master::TotalDiscounts},
    Line{line::Overpay, master::TotalOverpay}, Line{line::Paid, master::TotalVends},
    Line{line::Free, master::TotalFree},       Line{line::Jugs, master::TotalJugs},
    Line{line::Tests, master::TotalTests}};
constexpr std::array Permanent = {Line{line::Takings, master::LifetimeTakings},
                                  Line{line::Paid, master::LifetimeVends}};

std::vector<SettingRange> everything() {
    std::vector<SettingRange> all{master::MachineNumber, master::MoneyDecimals,  master::PreselectionVends,
                                  master::CoinCount,     master::MdbAuditAmount, master::AlarmNewest,
                                  master::AlarmRing};
    for (const Line& each : Clearable) all.emplace_back(each.setting);
    for (const Line& each : Permanent) all.emplace_back(each.setting);
    for (const SettingRange& each :
         {hot_drink::SelectionVends, hot_drink::SelectionFree, hot_drink::SelectionJugs, hot_drink::SelectionTests,
          sector::SectorVends, sector::SectorFree, sector::SectorTests})
        all.push_back(each);
    return all;
}

std::string twoDigits(std::uint32_t number) {
    const std::string digits = std::to_string(number % 100);
    return digits.size() < 2 ? "0" + digits : digits;
}

class Sales {
  public:
    Sales(const Values& values, bool forPeople)
        : values_(values), separator_(forPeople ? platform().decimalSeparator() : "."), forPeople_(forPeople) {
        decimals_ = DecimalsOf(of(master::MoneyDecimals).value_or(0));
    }

    std::optional<std::uint32_t> of(const Setting& setting) const {
        const auto found = values_.find(PlaceOf(setting));
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }

    /// A date that cannot be is told as the page of the alarms tells it.
    std::string dateOf(std::uint32_t day, std::uint32_t month, std::uint32_t year) const {
        if (day < 1 || day > 31 || month < 1 || month > 12) return "00/00/00";
        const int fullYear = 2000 + static_cast<int>(year);
        if (forPeople_) return platform().shortDate(static_cast<int>(day), static_cast<int>(month), fullYear);
        return std::to_string(fullYear) + "-" + twoDigits(month) + "-" + twoDigits(day);
    }

    Report make() {
        report_.title = say(Word::ReportTitle);
        totals(LanguageTable(line::Totals), Clearable);
        for (int i = 0; i < master::PreselectionVends.size(); ++i)
            add(LanguageTable(line::FirstPreselection + i), {master::PreselectionVends[i]});
        totals(LanguageTable(line::PermanentTotals), Permanent);
        vends(
            LanguageTable(line::Beverages), LanguageTable(line::Beverage),
            {hot_drink::SelectionVends, hot_drink::SelectionFree, hot_drink::SelectionTests, hot_drink::SelectionJugs},
            [](int i) { return std::to_string(i + 1); });
        vends(LanguageTable(line::Sectors), LanguageTable(line::Sector),
              {sector::SectorVends, sector::SectorFree, sector::SectorTests},
              [](int i) { return std::to_string(i / SectorsInARow + 1) + std::to_string(i % SectorsInARow + 1); });
        section(LanguageTable(line::Coins));
        for (int i = 0; i < master::CoinCount.size(); ++i)
            add(LanguageTable(line::Coin) + ' ' + std::to_string(i + 1), {master::CoinCount[i]});
        section(LanguageTable(line::Audit));
        for (int i = 0; i < master::MdbAuditAmount.size(); ++i)
            add(LanguageTable(line::FirstAudit + i), {master::MdbAuditAmount[i]}, true);
        alarms();
        return std::move(report_);
    }

  private:
    void section(const std::string& title, std::vector<std::string> heads = {}) {
        report_.sections.push_back({title, std::move(heads), {}, false});
    }

    /// A row of the present section; the amounts of the audit are money although their page shows them raw.
    void add(const std::string& name, const std::vector<Setting>& settings, bool isMoney = false) {
        const ReportSection& section = report_.sections.back();
        ReportRow row{{name}, {}};
        for (const Setting& setting : settings) {
            const auto [found, index] = FindParameter(setting.board, setting.number);
            const auto raw = of(setting);
            const bool asMoney = isMoney || found->scale == "money";
            row.cells.push_back(!raw      ? "-"
                                : asMoney ? formatScaled(*raw, decimals_, separator_)
                                          : std::to_string(*raw));
            const std::string& head = section.heads.empty() ? name : section.heads[row.cells.size() - 2];
            row.objects.push_back({{"section", section.title},
                                   {"caption", name},
                                   {"column", head},
                                   {"board", BoardName(setting.board)},
                                   {"name", ParameterName(*found, index)},
                                   {"value", raw ? FieldValue(row.cells.back()) : FieldValue(nullptr)}});
        }
        report_.sections.back().rows.push_back(std::move(row));
    }

    template <class Lines>
    void totals(const std::string& title, const Lines& lines) {
        section(title);
        for (const Line& each : lines) add(LanguageTable(each.caption), {each.setting});
    }

    /// Nothing of a board that is not there.
    template <class Number>
    void vends(const std::string& title, const std::string& caption, const std::vector<SettingRange>& counters,
               const Number& number) {
        bool isThere = false;
        for (int i = 0; i < counters.front().size(); ++i) isThere = isThere || of(counters.front()[i]);
        if (!isThere) return;
        constexpr std::array Heads = {line::Paid, line::Free, line::Tests, line::Jugs};
        section(title);
        for (std::size_t i = 0; i < counters.size(); ++i)
            report_.sections.back().heads.push_back(LanguageTable(Heads.at(i)));
        for (int i = 0; i < counters.front().size(); ++i) {
            std::vector<Setting> row;
            row.reserve(counters.size());
            for (const SettingRange& each : counters) row.push_back(each[i]);
            add(caption + ' ' + number(i), row);
        }
    }

    /// The newest first; an empty slot ends them.
    void alarms() {
        section(LanguageTable(line::Alarms),
                {LanguageTable(line::Date), LanguageTable(line::Time), LanguageTable(line::Description)});
        report_.sections.back().hasWords = true;
        int slot = static_cast<int>(of(master::AlarmNewest).value_or(AlarmSlots));
        for (int k = 1; k <= AlarmSlots && slot < AlarmSlots; ++k, slot = (slot + AlarmSlots - 1) % AlarmSlots) {
            std::array<std::uint32_t, AlarmRecord> record;
            bool isWhole = true;
            for (int field = 0; field < AlarmRecord; ++field) {
                const auto value = of(master::AlarmRing[slot * AlarmRecord + field]);
                isWhole = isWhole && value;
                record[static_cast<std::size_t>(field)] = value.value_or(0);
            }
            const auto& [minute, hour, day, month, year, code] = record;
            if (!isWhole || code > HighestAlarm) break;
            const std::string time = twoDigits(hour) + ":" + twoDigits(minute);
            const std::string text = LanguageTable(line::FirstAlarm + static_cast<int>(code));
            const std::string title = report_.sections.back().title;
            report_.sections.back().rows.push_back({{std::to_string(k), dateOf(day, month, year), time, text},
                                                    {{{"section", title},
                                                      {"number", std::int64_t{k}},
                                                      {"date", dateOf(day, month, year)},
                                                      {"time", time},
                                                      {"code", std::int64_t{code}},
                                                      {"text", text}}}});
        }
        if (report_.sections.back().rows.empty()) {
            report_.sections.back().heads.clear();
            report_.sections.back().rows.push_back({{say(Word::NoAlarms)}, {}});
        }
    }

    const Values& values_;
    const std::string separator_;
    const bool forPeople_;
    int decimals_ = 0;
    Report report_;
};

}  // namespace

int report(Context& context) {
    Connection connection(context);
    connection.begin();
    std::vector<Place> places;
    for (const SettingRange& range : everything())
        for (int i = 0; i < range.size(); ++i)
            if (connection.board(range.board()).isUsable()) places.push_back({range.board(), range[i].number});
    LineWork& work = connection.work();
    work.label = say(Word::Reading);
    Values values;
    const Ending how = work.read(places, values);
    const bool isForPeople = !context.out.isJson() && context.options.format != "csv";
    Sales sales(values, isForPeople);
    const auto machine = sales.of(master::MachineNumber);
    Report made = sales.make();
    const std::tm now = context.now();
    const std::string date =
        sales.dateOf(static_cast<std::uint32_t>(now.tm_mday), static_cast<std::uint32_t>(now.tm_mon + 1),
                     static_cast<std::uint32_t>(now.tm_year % 100));
    made.about = {{LanguageTable(line::MachineNumber), machine ? std::to_string(*machine) : "-"},
                  {LanguageTable(line::Date), date}};
    if (context.out.isJson()) {
        context.out.result(
            "", {{"machine", machine ? FieldValue(std::int64_t{*machine}) : FieldValue(nullptr)}, {"date", date}});
        for (const ReportSection& section : made.sections)
            for (const ReportRow& row : section.rows)
                for (const Fields& fields : row.objects) context.out.result("", fields);
    } else {
        const std::string& format = context.options.format;
        context.out.document(format == "csv" ? asCsv(made) : format == "html" ? asHtml(made) : asText(made));
    }
    const bool isWhole = how == Ending::Whole && values.size() == places.size();
    if (!isWhole)
        context.out.remark(
            say(Word::LeftOut, {std::to_string(places.size() - values.size()), say(Word::CouldNotBeRead)}));
    const std::string lack = connection.lack();
    if (!lack.empty()) context.out.remark(lack);
    return isWhole && lack.empty() ? status::Well : status::Differs;
}

}  // namespace kestrel::ctl

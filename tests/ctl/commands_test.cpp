// kestrelctl on a simulated machine: what it writes and what it leaves, what it says of files that were changed, and
// what the other commands find. A wrong line in a file must never reach a machine.
#include <gtest/gtest.h>

#include <algorithm>

#include "ctl/settings_file.h"
#include "ctl/words.h"
#include "support/terminal.h"
#include "support/world.h"

namespace kestrel::testing {
namespace {

using simulator::FaultKind;

class Commands : public ::testing::Test {
  protected:
    Commands() { plugIn(World::still()); }

    void plugIn(const simulator::MachineOptions& options) {
        terminal.install(InstallationDirectory());
        line = std::make_unique<MachineLine>(options);
        terminal.lines[1] = line.get();
        line->machine.onExchange = [this](const simulator::Exchange& exchange) {
            if (exchange.request.write)
                writes.push_back({static_cast<int>(exchange.request.board), exchange.parameter, exchange.value});
        };
    }
    Terminal::Said run(const std::string& words) { return terminal.command(words + " --language English"); }
    /// The file that `read` makes of these groups.
    std::string readFile(const std::string& options) {
        EXPECT_EQ(run("read a.txt " + options).status, 0);
        return terminal.files["a.txt"];
    }
    /// Changes one line of the file, by the name that stands in it; what is given is its figure and its raw value.
    void edit(const std::string& name, const std::string& figure, const std::string& raw) {
        std::string& text = terminal.files["a.txt"];
        const auto at = text.find("\t" + name + "\t");
        ASSERT_NE(at, std::string::npos) << name;
        const auto from = at + name.size() + 2;
        text.replace(from, text.find('\n', from) - from, figure + "\t" + raw);
    }
    void set(int bank, int parameter, std::uint32_t value) {
        line->machine.setValue(static_cast<simulator::Board>(bank), parameter, value);
    }
    std::uint32_t board(int bank, int parameter) const {
        return line->machine.value(static_cast<simulator::Board>(bank), parameter);
    }

    Terminal terminal;
    std::unique_ptr<MachineLine> line;
    Writes writes;
};

TEST_F(Commands, WriteWhatDiffersParameterBeforeCopyAndNothingElse) {
    readFile("--group prices,temperatures,machine");
    edit("price[3]", "0.75", "75");
    edit("machine.powders", "4", "4");
    edit("valve.powder1[1]", "2", "2");
    edit("boiler.set_point", "101 °C", "101");
    edit("machine.number", "7", "7");
    set(0, 49, 11);  // the copy of price 4 alone
    const Terminal::Said dry = run("write a.txt --edited --dry-run");
    EXPECT_TRUE(writes.empty());
    EXPECT_EQ(dry.lines().size(), 8U) << dry.results;
    const Terminal::Said said = run("write a.txt --edited --yes");
    EXPECT_EQ(said.status, 0) << said.remarks;
    EXPECT_EQ(writes, (Writes{{1, 1156, 4},
                              {1, 1161, 4},
                              {0, 18, 75},
                              {0, 48, 75},
                              {0, 49, 65},
                              {1, 1199, 101},
                              {1, 1309, 2},
                              {1, 1342, 2}}))
        << said.results;
    EXPECT_NE(said.remarks.find("--own"), std::string::npos) << said.remarks;
    EXPECT_EQ(run("write a.txt --edited --own --yes").status, 0);
    EXPECT_EQ(board(0, 356), 7U);
    EXPECT_EQ(run("compare a.txt --edited").status, 0);
    EXPECT_NE(run("write a.txt --edited --own").remarks.find("0"), 0U);
}

TEST_F(Commands, LeaveWhatAPageWouldNotLetAUserSet) {
    struct Row {
        const char* name;
        const char *figure, *raw;
        int bank, parameter;
        std::uint32_t value;  ///< of the machine, which decides
        const char* why;
    };
    readFile("--all");
    const std::string whole = terminal.files["a.txt"];
    for (const Row& row :
         {Row{"total.vends", "1", "1", 0, 3, 2, "no setting"},
          Row{"money.decimals_setting", "1", "1", 0, 3, 2, "payment system"},
          Row{"price[1]", "0.51", "51", 0, 3, 1, "decimals"}, Row{"cold_valve.pairing[1]", "1", "1", 0, 3, 2, ""},
          Row{"unique.delay[1]", "0.1 s", "1", 0, 3, 2, "not in use"},
          Row{"sector.price[1]", "2", "1", 0, 2, 0, "not there"}}) {
        plugIn(World::still());
        terminal.files["a.txt"] = whole;
        edit(row.name, row.figure, row.raw);
        set(row.bank, row.parameter, row.value);
        writes.clear();
        const Terminal::Said said = run("write a.txt --edited --yes");
        if (*row.why) {
            EXPECT_TRUE(writes.empty()) << row.name << said.results;
            EXPECT_NE(said.remarks.find(row.why), std::string::npos) << row.name << ": " << said.remarks;
        } else {
            EXPECT_EQ(writes.size(), 2U) << row.name;
        }
    }
}

TEST_F(Commands, KeepBitsThatNoPageChanges) {
    set(0, 85, 4 + 16);
    set(0, 87, 4 + 16);
    readFile("--group payment");
    edit("payment.options", "0x2D", "45");  // bits 0, 2, 3 and 5
    EXPECT_EQ(run("write a.txt --edited --yes").status, 0);
    EXPECT_EQ(board(0, 85), 1U + 4 + 16 + 32);
    EXPECT_EQ(run("compare a.txt --edited").status, 0);
}

TEST_F(Commands, RefuseAFileWithTheLineThatIsWrongAndWriteNothing) {
    const std::string good = readFile("--group temperatures");
    struct Row {
        const char* what;
        std::function<void(std::string&)> change;
        const char* told;
        bool edited = true;
    };
    const auto replaced = [](const char* from, const char* to) {
        return [=](std::string& text) { text.replace(text.find(from), std::string(from).size(), to); };
    };
    for (const Row& row :
         {Row{"another first line", replaced("kestrel-settings 1", "kestrel-settings 2"), "line 1:"},
          Row{"a changed figure", replaced("10 °C", "11 °C"), "line 12:"},
          Row{"a changed raw value", replaced("\t10\n", "\t11\n"), "line 12:"},
          Row{"both changed, without the option", replaced("10 °C\t10", "11 °C\t11"), "--edited", false},
          Row{"beyond what a page lets set", replaced("96 °C\t96", "196 °C\t196"),
              "line 10: 196 is not within 70 to 110"},
          Row{"a number that is none", replaced("\t10\n", "\tten\n"), "line 12:"},
          Row{"an unknown name", replaced("tank.set_point", "tank.sett_point"), "line 12:"},
          Row{"an unknown board", replaced("sector\ttank.set", "cedar\ttank.set"), "line 12:"},
          Row{"the same twice", replaced("tank.offset", "tank.set_point"), "line 13:"},
          Row{"a board that the head lacks", replaced("board\tsector\tW0245AB04.inx\n", ""), "line 11:"},
          Row{"another identity", replaced("W0292AP07", "W0292AP08"), "W0292AP08"},
          Row{"no sum", replaced("sum\t", "#um\t"), "sum"},
          Row{"something behind the sum", [](std::string& text) { text += "x\n"; }, "line 18:"},
          Row{"nothing at all", [](std::string& text) { text.clear(); }, "sum"}}) {
        terminal.files["a.txt"] = good;
        row.change(terminal.files["a.txt"]);
        const Terminal::Said said = run(std::string("write a.txt --yes ") + (row.edited ? "--edited" : ""));
        EXPECT_EQ(said.status, ctl::status::Trouble) << row.what;
        EXPECT_NE(said.remarks.find(row.told), std::string::npos) << row.what << ": " << said.remarks << good;
        EXPECT_TRUE(writes.empty()) << row.what;
    }
    for (std::size_t length = 0; length + 1 < good.size(); ++length)
        EXPECT_THROW(ctl::parse(good.substr(0, length), "a", true), RunTimeError) << length;
    std::string windows = good;
    for (std::size_t at = 0; (at = windows.find('\n', at)) != std::string::npos; at += 2) windows.insert(at, "\r");
    EXPECT_NO_THROW(ctl::parse(windows, "a", false));
}

TEST_F(Commands, SayWhatCouldNotBeReadAndNeverInventIt) {
    line->machine.onExchange = [this](const simulator::Exchange& exchange) {
        if (exchange.request.board == simulator::Board::Sector && exchange.parameter != 0)
            line->machine.setBoardSilent(simulator::Board::Sector, true);  // from the next one on
    };
    const Terminal::Said said = run("read a.txt --group temperatures --json");
    EXPECT_EQ(said.status, ctl::status::Differs);
    const ctl::SettingsFile file = ctl::parse(terminal.files["a.txt"], "a.txt", false);
    EXPECT_FALSE(file.isComplete);
    for (const ctl::Entry& each : file.entries)
        EXPECT_EQ(each.raw.has_value(), each.item.board() == Board::HotDrink || each.item.name() == "tank.set_point");
    EXPECT_EQ(field(said.results, "unread"), "4");
}

/// The words that are built in are the English ones of the file, and every language has all of them.
TEST_F(Commands, SpeakEveryLanguage) {
    const auto allWords = [] {
        std::vector<std::string> all;
        for (int i = 1; i <= static_cast<int>(ctl::Word::GroupAlarms); ++i)
            all.push_back(ctl::say(static_cast<ctl::Word>(i)));
        return all;
    };
    const std::vector<std::string> builtIn = allWords();
    ctl::loadWords("English");
    EXPECT_EQ(allWords(), builtIn);
    for (const char* language : {"Italiano", "Deutsch", "Francais", "Espanol"}) {
        ctl::loadWords(language);
        const std::vector<std::string> words = allWords();
        const auto places = [](const std::string& text) { return std::ranges::count(text, '%'); };
        for (std::size_t i = 0; i < words.size(); ++i)
            EXPECT_EQ(places(words[i]), places(builtIn[i])) << language << ": " << words[i];
        EXPECT_NE(words, builtIn) << language;
    }
}

TEST_F(Commands, SetTheClockOnlyWhereItIsAskedForAndToThisComputersTime) {
    readFile("--group clock");
    EXPECT_EQ(run("write a.txt --yes").status, 0);
    EXPECT_TRUE(writes.empty());
    EXPECT_EQ(run("write a.txt --dry-run --clock").lines().size(), 5U);
    EXPECT_EQ(run("write a.txt --yes --clock").status, 0);
    EXPECT_EQ(writes, (Writes{{0, 239, 9}, {0, 240, 41}, {0, 241, 14}, {0, 242, 5}, {0, 243, 24}}));
}

TEST_F(Commands, FindWhyAMachineCannotBeReached) {
    struct Row {
        const char* faults;
        const char* finding;
    };
    for (const Row& row : {Row{"", "well"}, Row{"silent=1", "silence"}, Row{"echo=1", "echo"}, Row{"noise=1", "noise"},
                           Row{"flip=1", "speed"}, Row{"flip=0.2", "spoiled"}}) {
        simulator::MachineOptions options = World::still();
        options.faults = simulator::parseFaults(row.faults);
        plugIn(options);
        const Terminal::Said said = run("doctor --json --wait 100");
        EXPECT_NE(said.results.find("\"finding\": \"" + std::string(row.finding)), std::string::npos)
            << row.faults << said.results << said.remarks;
        EXPECT_EQ(said.status, *row.faults ? ctl::status::Differs : ctl::status::Well) << row.faults;
    }
    plugIn(World::still());
    terminal.files.erase((terminal.directory / "W0292AP07.inx").generic_string());
    EXPECT_NE(run("doctor").results.find("W0292AP07.inx"), std::string::npos);
    const Terminal::Said said = run("identify --json");
    EXPECT_EQ(field(said.lines().at(1), "index_file_there"), "false") << said.results;
    EXPECT_EQ(said.status, ctl::status::Differs);
    for (const char* command : {"read a.txt --group temperatures", "report"}) {
        const Terminal::Said part = run(command);
        EXPECT_EQ(part.status, ctl::status::Differs) << command;
        EXPECT_NE(part.remarks.find("index file missing"), std::string::npos) << command << part.remarks;
    }
    EXPECT_NE(terminal.files["a.txt"].find("complete\tno"), std::string::npos);
    EXPECT_EQ(run("ports").results, "COM1 (usb-serial): can be opened\n");
    terminal.openFailures[1] = {8005, "COM1: in use"};
    EXPECT_EQ(run("ports").results, "COM1 (usb-serial): in use\n");
    EXPECT_EQ(field(run("ports --json").results, "trouble"), "COM1: in use");
}

TEST_F(Commands, ReportAndWatchInFiguresOfTheBoards) {
    const std::string text = run("report").results;
    for (const char* part :
         {"Takings         1775.60", "Bev. 18", "Sect. 68", "Amount paid into the tubes", "981.50", "Out of cups"})
        EXPECT_NE(text.find(part), std::string::npos) << part << text;
    const std::string csv = run("report --format csv").results;
    for (const char* part : {"Machine number,104217\nDate,2024-05-14\n",
                             "\nBeverages,,Paid vends,Free vends,Test vends", "\nAlarms,1,2023-12-28,07:31,"})
        EXPECT_NE(csv.find(part), std::string::npos) << part << csv;
    const std::string json = run("report --json").results;
    EXPECT_NE(json.find("\"column\": \"Jug vends\", \"board\": \"hot-drink\", \"name\": \"selection.jugs[1]\", "
                        "\"value\": \"14\"}"),
              std::string::npos)
        << json;
    EXPECT_NE(run("report --format html").results.find("<td>981.50"), std::string::npos);
    const Terminal::Said said = run("watch tank.temperature price[1] --json --for 2");
    ASSERT_EQ(said.lines().size(), 2U) << said.results << said.remarks;
    EXPECT_EQ(field(said.lines()[0], "value"), "11.0");
    EXPECT_EQ(field(said.lines()[1], "value"), "0.50");
    EXPECT_EQ(run("watch no.such").status, ctl::status::Trouble);
    const Terminal::Said traffic = run("monitor price[1] --for 2");
    EXPECT_NE(traffic.results.find("[01 72 21 0A 9E] -> [32 00 32]  price[1]  ok"), std::string::npos)
        << traffic.results;
}

TEST(TerminalOptions, AreRefusedWhereTheCommandDoesNotTakeThem) {
    for (const char* line :
         {"", "nothing", "read", "read a b", "compare a b c", "watch", "read a --dry-run", "--dry-run read a",
          "report --format pdf", "write a --group prices,all", "read a --wait 0", "doctor --fault x=1 --demo",
          "read a --demo --port /dev/x", "identify --fault drop=1", "read a --directory /no/such"}) {
        std::istringstream words(line);
        EXPECT_THROW(ctl::parseOptions({std::istream_iterator<std::string>(words), {}}), BadOption) << line;
    }
    EXPECT_NE(helpText(ctl::programText("write")).find("--dry-run"), std::string::npos);
    EXPECT_EQ(helpText(ctl::programText("read")).find("--dry-run"), std::string::npos);
}

}  // namespace
}  // namespace kestrel::testing

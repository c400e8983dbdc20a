// kestrelctl on the simulated machine of a run.
#include "simulation/terminal.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

#include "ctl/settings_file.h"
#include "link/link_engine.h"
#include "platform/errors.h"
#include "simulation/fault_line.h"
#include "simulation/require.h"
#include "support/terminal.h"

namespace kestrel::testing {

namespace {

using ctl::Place;
using Memory = std::map<Place, std::uint32_t>;

constexpr Micros Second = 1'000'000;
constexpr Micros Healing = 20 * Second;
constexpr Micros Pause = 8 * Second;  ///< between commands: no answer to the last question of one meets the next
constexpr Micros Longest = 7 * 86'400 * Second;  ///< of one command
constexpr const char* File = "wanted.txt";
constexpr const char* ReadFile = "read.txt";

class TerminalPlayer {
  public:
    explicit TerminalPlayer(std::uint64_t seed) : plan_(planOf(seed)), line_(plan_) {
        terminal_.install(KESTREL_INSTALLATION);
        terminal_.lines[1] = &line_;
        terminal_.afterEvent = [this] { incidents(); };
        line_.onHeard = [this](const simulator::Exchange& exchange) { heard(exchange); };
    }

    Outcome play() {
        Outcome outcome;
        try {
            run();
        } catch (const CheckFailed& failure) {
            outcome.failedCheck = failure.check;
            outcome.detail = failure.detail;
        }
        outcome.played = terminal_.now();
        outcome.hash = hash_;
        outcome.counts = counts_;
        return outcome;
    }

  private:
    /// Another machine comes by the cable alone: a memory that changes as a whole would be one unseen.
    static Plan planOf(std::uint64_t seed) {
        Plan plan = Plan::draw(seed);
        plan.faults.erase("swap");
        plan.incidents.erase("swap");
        return plan;
    }

    struct Said : Terminal::Said {
        bool isUpset = false;  ///< a board has forgotten or changed something meanwhile, or has lied
    };

    void run() {
        inTrouble_ = false;
        draw();
        const Memory atFirst = memory();
        trouble(true);
        checkReading(command("read read.txt"));
        checkComparing(command("compare wanted.txt"));
        const Memory before = memory();
        checkWriting(command("write --yes wanted.txt"), before);
        trouble(false);
        // What changed by itself is put right, so that the rest can be held against it.
        for (const auto& [place, value] : atFirst)
            if (!wanted_.contains(place) || isFixed(place)) line_.machine().setValue(place.board, place.number, value);
        line_.machine().setValue(Board::Master, decimals_.number, decimals_.value);
        const Said finished = command("write --yes wanted.txt");
        require(finished.status == ctl::status::Well, "a second write on a good line finishes", finished.remarks);
        for (const auto& [place, value] : memory()) {
            const auto wanted = wanted_.find(place);
            const std::uint32_t right = wanted == wanted_.end() ? atFirst.at(place) : wanted->second.value;
            const bool isRight = wanted == wanted_.end() ? value == right : wanted->second.item.areSame(value, right);
            require(isRight, "what was asked for is there, and nothing else is touched", nameOf(place), " = ", value,
                    " in place of ", right);
        }
        const Said same = command("compare wanted.txt");
        require(same.status == ctl::status::Well && same.results.empty(), "compare says equal after a whole write",
                same.remarks);
    }

    /// A file that differs from the machine in some places of some groups. What a machine of this kind does not use,
    /// and what decides about that, stays as it is.
    void draw() {
        auto random = chanceOf(plan_.seed, Chance::Act, 0);
        const std::vector<std::string> groups = ctl::SettableGroups();
        for (auto count = random.between(1, 3); count > 0; --count)
            groups_ += (groups_.empty() ? "" : ",") + random.of(groups);
        const int one = static_cast<int>(random.between(2, 40));
        ctl::SettingsFile file;
        file.decimals = 2;
        for (const Board board : simulator::allBoards)
            if (line_.machine().fitted(board)) file.boards[board] = indexFiles[static_cast<std::size_t>(board)];
        for (const ctl::Item& item : ctl::AllItems()) {
            const CatalogueRow& row = *item.row;
            const bool isThere = line_.machine().fitted(item.board());
            if (!isThere || row.kind != CatalogueRow::Kind::Setting || groups_.find(row.group) == std::string::npos)
                continue;
            std::uint32_t value = valueAt(item.place());
            if (random.between(1, one) == 1 && !isFixed(item.place())) {
                const std::uint32_t other =
                    static_cast<std::uint32_t>(random.between(row.lowest, std::min(row.highest, 255U)));
                value = item.blend(other, value);
            }
            wanted_.emplace(item.place(), Wanted{item, value});
            if (item.hasCopy()) wanted_.emplace(item.copy(), Wanted{item, value});
            file.entries.push_back({item, value});
        }
        terminal_.files[File] = ctl::print(file);
    }

    void trouble(bool on) {
        inTrouble_ = on;
        line_.strike(on);
        terminal_.openFailures.clear();
        line_.setLatency(on ? plan_.chunk * simulator::millisecond : 0);
        auto random = chanceOf(plan_.seed, Chance::When);
        for (const auto& [name, aMinute] : plan_.incidents) next_[name] = terminal_.now() + after(random, aMinute);
        if (on) return;
        if (line_.plugged() != 0) line_.begin(terminal_.now(), CablesChanged);
        terminal_.run(Healing / 1000);
        line_.take(terminal_.now());
    }

    static Micros after(Dice& random, double aMinute) {
        return static_cast<Micros>(static_cast<double>(random.between(1, 120 * Second)) / aMinute);
    }

    void incidents() {
        require(terminal_.now() - begun_ < Longest, "a command comes to its end", "");
        if (!inTrouble_) return;
        for (auto& [name, when] : next_) {
            if (when > terminal_.now()) continue;
            auto random = chanceOf(plan_.seed, Chance::Incident, ++incidents_);
            when = terminal_.now() + after(random, plan_.incidents.at(name));
            ++counts_[Acts];
            if (name == WindowClosed) {
                ++terminal_.ends;
            } else if (name == PortDenied) {
                if (terminal_.openFailures.erase(1) == 0)
                    terminal_.openFailures[1] = {error_number::SerialPortInUse, "denied"};
            } else if (name == LoopBlocked) {
                liars_ = true;  // what came meanwhile may be delivered in another order than it came
                if (line_.present()) terminal_.letPass(random.between(500, 30'000) * 1000);
            } else if (name != DiskTrouble) {
                line_.begin(terminal_.now(), name);
            }
        }
    }

    Said command(const std::string& line) {
        terminal_.letPass(Pause);
        line_.take(terminal_.now());
        begun_ = terminal_.now();
        const long changes = line_.changes();
        liars_ = hasWritten_ = false;
        terminal_.ends = 0;
        isWriting_ = line.starts_with("write");
        Said said{terminal_.command(line + " --json --language English --wait 40 --group " + groups_)};
        isWriting_ = false;
        said.isUpset = liars_ || line_.memoryUpsetSince(begun_) || line_.changes() != changes;
        for (const char letter : said.results) hash_ = (hash_ ^ static_cast<unsigned char>(letter)) * 1099511628211ULL;
        if (said.isUpset) ++counts_[PagesExcused];
        return said;
    }

    /// A board has made up its mind about a frame.
    void heard(const simulator::Exchange& exchange) {
        ++counts_[Frames];
        const auto has = [&](const char* what) { return exchange.note.find(what) != std::string::npos; };
        if (has("blind") || has("collide")) liars_ = true;
        if (has("late") && (plan_.faults.contains("busy") || plan_.incidents.contains("busy")))
            liars_ = true;  // such an answer comes later than any that is waited for
        if (exchange.request.verdict != simulator::Frame::Verdict::Good) return;
        const Place place{exchange.request.board, exchange.parameter};
        if (!exchange.request.write) {
            if (!hasWritten_ && place.board == Board::Master && place.number == MachineNumber) home_ = line_.plugged();
            return;
        }
        hasWritten_ = true;
        const Bytes& data = exchange.request.data;
        const auto value = static_cast<std::uint32_t>(ValueOf(data.data(), static_cast<int>(data.size()) - 1));
        if (place.number == 0) return;  // spoiled on its way; no board has the address
        require(isWriting_, "nothing but write writes", nameOf(place));
        require(line_.plugged() == home_, "nothing is written to another machine", nameOf(place));
        const auto wanted = wanted_.find(place);
        require(wanted != wanted_.end() && wanted->second.item.areSame(wanted->second.value, value),
                "every write is one that the file asks for", nameOf(place), " = ", value, " in place of ",
                wanted == wanted_.end() ? -1 : std::int64_t{wanted->second.value});
        ++counts_[Accepted];
    }

    void checkReading(const Said& said) {
        const auto found = terminal_.files.find(ReadFile);
        if (said.status == ctl::status::Trouble || found == terminal_.files.end()) return;
        const ctl::SettingsFile file = ctl::parse(found->second, ReadFile, false);
        const bool isWhole =
            std::ranges::all_of(file.entries, [](const ctl::Entry& each) { return each.raw.has_value(); });
        require(isWhole || !file.isComplete, "a file that lacks values is marked", said.remarks);
        if (said.isUpset) return;
        for (const ctl::Entry& each : file.entries)
            require(!each.raw || *each.raw == valueAt(each.item.place()), "what is in the file is on the machine",
                    nameOf(each.item.place()), each.raw.value_or(0), "in place of", valueAt(each.item.place()));
        ++counts_[Confirmed];
    }

    void checkComparing(const Said& said) {
        if (said.isUpset) return;
        for (const std::string& line : said.lines()) {
            const Place place = placeOf(line);
            require(field(line, "second_raw") == std::to_string(valueAt(place)), "a difference that is told is there",
                    line);
        }
    }

    void checkWriting(const Said& said, const Memory& before) {
        if (said.isUpset) return;
        std::set<Place> told;
        for (const std::string& line : said.lines()) {
            const Place place = placeOf(line);
            told.insert(place);
            const std::string outcome = field(line, "outcome");
            const std::string has = std::to_string(valueAt(place));
            if (outcome == "written")
                require(field(line, "wanted") == has, "what is told as written is there", line, has);
            if (outcome == "left")
                require(field(line, "before") == has, "what is told as left is as it was", line, has);
            if (outcome == "refused" || outcome == "other")
                require(field(line, "now") == has, "what a board is told to have it has", line, has);
            require(has == field(line, "wanted") || has == field(line, "before") || outcome == "other",
                    "every value is the old or the new one", line, has);
        }
        for (const auto& [place, value] : memory())
            require(value == before.at(place) || told.contains(place), "what has changed is told", nameOf(place),
                    value);
        ++counts_[ToldNotTaken];
    }

    Place placeOf(const std::string& line) const {
        std::string name = field(line, "name");
        const bool isCopy = name.ends_with(".copy");
        if (isCopy) name.resize(name.size() - 5);
        const auto item = ctl::FindItem(field(line, "board"), name);
        require(item.has_value(), "a line names a parameter", line);
        return isCopy ? item->copy() : item->place();
    }

    std::uint32_t valueAt(const Place& place) const {
        return line_.memory(static_cast<int>(place.board), place.number);
    }

    /// The settings and their copies, of all boards.
    Memory memory() const {
        Memory all;
        for (const ctl::Item& item : ctl::AllItems()) {
            const auto kind = item.row->kind;
            const bool isSetting = kind == CatalogueRow::Kind::Setting || kind == CatalogueRow::Kind::Own;
            if (!isSetting || !line_.machine().fitted(item.board())) continue;
            all[item.place()] = valueAt(item.place());
            if (item.hasCopy()) all[item.copy()] = valueAt(item.copy());
        }
        return all;
    }

    static std::string nameOf(const Place& place) {
        return ctl::BoardName(place.board) + ' ' + ParameterName(place.board, place.number) + ' ' +
               std::to_string(place.number);
    }

    /// What the machine does not use, and what decides about that.
    static bool isFixed(const Place& place) {
        static const std::set<std::string_view> names = {"payment.options", "money.decimals_setting", "cooling.kind",
                                                         "unique.delay"};
        return names.contains(FindParameter(place.board, place.number).first->name);
    }

    static constexpr int MachineNumber = 356;
    static constexpr struct {
        int number;
        std::uint32_t value;
    } decimals_{3, 2};
    static constexpr std::array indexFiles = {"W0256AP03.inx", "W0292AP07.inx", "W0245AB04.inx"};

    const Plan plan_;
    Terminal terminal_;
    FaultLine line_;
    std::string groups_;  ///< with commas between
    struct Wanted {
        ctl::Item item;
        std::uint32_t value;
    };
    std::map<Place, Wanted> wanted_;
    std::map<std::string, Micros> next_;
    std::uint32_t incidents_ = 0;
    bool inTrouble_ = false, isWriting_ = false, hasWritten_ = false, liars_ = false;
    std::size_t home_ = 0;  ///< the machine whose number was read last before the first write
    Micros begun_ = 0;
    std::uint64_t hash_ = 14695981039346656037ULL;
    Counts counts_{};
};

}  // namespace

Outcome playTerminal(std::uint64_t seed) { return std::make_unique<TerminalPlayer>(seed)->play(); }

}  // namespace kestrel::testing

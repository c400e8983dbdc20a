// What one simulated run is made of.
// See plan.h.
#include "simulation/plan.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <sstream>
#include <stdexcept>

#include "pages/registry.h"

namespace kestrel::testing {

namespace {

constexpr std::array<std::string_view, FaultCount> Names = {
    "silent", "slow",   "late",    "drop",   "extra",    "flip",    "ack",   "echo",    "noise", "reset",
    "lost",   "port",   "request", "part",   "noeffect", "clamp",   "blind", "collide", "busy",  "stream",
    "unplug", "denied", "stray",   "change", "block",    "restart", "hush",  "swap",    "disk"};
constexpr std::array<std::string_view, 4> Aims = {"all", "reads", "writes", "slaves"};

std::vector<std::string> split(const std::string& text, char mark) {
    std::vector<std::string> parts;
    std::istringstream in(text);
    for (std::string part; std::getline(in, part, mark);) parts.push_back(part);
    return parts;
}

/// "0-4,7,9-11".
std::string rangesOf(const std::vector<int>& numbers) {
    std::string text;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        std::size_t last = i;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) ++last;
        text += (text.empty() ? "" : ",") + std::to_string(numbers[i]);
        if (last > i) text += "-" + std::to_string(numbers[last]);
        i = last;
    }
    return text;
}

std::vector<int> numbersOf(const std::string& ranges) {
    std::vector<int> numbers;
    for (const std::string& range : split(ranges, ',')) {
        const auto dash = range.find('-');
        const int first = std::stoi(range);
        const int last = dash == std::string::npos ? first : std::stoi(range.substr(dash + 1));
        for (int i = first; i <= last; ++i) numbers.push_back(i);
    }
    return numbers;
}

template <class Table>
std::size_t placeOf(const Table& table, const std::string& name) {
    const auto found = std::find(table.begin(), table.end(), name);
    if (found == table.end()) throw std::invalid_argument("a plan knows no \"" + name + "\"");
    return static_cast<std::size_t>(found - table.begin());
}

void drawFaults(Plan& plan, Dice& random) {
    constexpr std::array<double, 4> OfExchanges = {0.002, 0.01, 0.05, 0.25};
    constexpr std::array<double, 3> OfMinutes = {0.5, 2, 8};
    const double density = std::array{0.0, 0.06, 0.15, 0.3, 0.5}[static_cast<std::size_t>(random.between(0, 4))];
    for (std::size_t i = 0; i < FaultCount; ++i) {
        const bool exists = random.chance(density);
        const auto strength = static_cast<std::size_t>(random.between(0, 11));
        if (exists) plan.strength[i] = i < FirstIncident ? OfExchanges[strength % 4] : OfMinutes[strength % 3];
    }
}

void drawPages(Plan& plan, Dice& random) {
    std::vector<std::string> all;
    for (const auto& [name, factory] : AllPages()) all.push_back(name);
    const auto count = static_cast<std::size_t>(random.between(1, 5));
    while (plan.pages.size() < count && !all.empty()) {
        const auto at = all.begin() + random.between(0, static_cast<std::int64_t>(all.size()) - 1);
        plan.pages.push_back(*at);
        all.erase(at);
    }
}

}  // namespace

std::string_view nameOf(Fault fault) { return Names[static_cast<std::size_t>(fault)]; }

Dice chanceOf(std::uint64_t seed, Chance subject, std::uint32_t part) {
    Dice ofSeed(seed);
    return Dice(ofSeed.next() ^ Dice((std::uint64_t{static_cast<std::uint32_t>(subject)} << 32) | part).next());
}

Plan Plan::draw(std::uint64_t seed) {
    auto random = chanceOf(seed, Chance::Plan);
    Plan plan;
    plan.seed = seed;
    plan.seconds = static_cast<int>(random.between(20, 200));
    plan.hotDrinkBoard = random.chance(0.85);
    plan.sectorBoard = random.chance(0.85);
    plan.moving = random.chance(0.5);
    plan.rough = random.chance(0.15);
    plan.strange = random.chance(0.25);
    plan.chunk = std::array{0, 1, 16, 16, 16, 250}[static_cast<std::size_t>(random.between(0, 5))];
    plan.aim = static_cast<Aim>(std::max<std::int64_t>(random.between(-4, 3), 0));
    plan.actsPerMinute = static_cast<int>(random.between(2, 60));
    drawFaults(plan, random);
    drawPages(plan, random);
    plan.acts.resize(static_cast<std::size_t>(plan.seconds * plan.actsPerMinute / 60));
    std::iota(plan.acts.begin(), plan.acts.end(), 0);
    return plan;
}

std::string Plan::text() const {
    std::ostringstream out;
    out << "seed=" << seed << " seconds=" << seconds << " quiet=" << quietSeconds << " boards=M"
        << (hotDrinkBoard ? "H" : "") << (sectorBoard ? "S" : "") << " moving=" << moving << " rough=" << rough
        << " strange=" << strange << " chunk=" << chunk << " aim=" << Aims[static_cast<std::size_t>(aim)]
        << " pace=" << actsPerMinute << " stay=" << stay << " faults=";
    for (std::size_t i = 0, many = 0; i < FaultCount; ++i)
        if (strength[i] > 0) out << (many++ ? "," : "") << Names[i] << ':' << strength[i];
    out << " pages=";
    for (std::size_t i = 0; i < pages.size(); ++i) out << (i ? "," : "") << pages[i];
    out << " acts=" << rangesOf(acts);
    if (!script.empty()) out << " script=" << script;
    if (singleAt > 0) out << " single=" << nameOf(single) << " at=" << singleAt;
    return out.str();
}

Plan Plan::parse(const std::string& line) {
    std::map<std::string, std::string> given;
    for (const std::string& item : split(line, ' ')) {
        const auto sign = item.find('=');
        if (sign == std::string::npos)
            throw std::invalid_argument("a plan is written NAME=VALUE, not \"" + item + "\"");
        given[item.substr(0, sign)] = item.substr(sign + 1);
    }
    if (!given.contains("seed")) throw std::invalid_argument("a plan needs a seed");
    Plan plan = draw(std::stoull(given["seed"]));
    const auto number = [&](const char* name, auto& into) {
        if (given.contains(name)) into = static_cast<std::remove_reference_t<decltype(into)>>(std::stoi(given[name]));
    };
    number("seconds", plan.seconds);
    number("quiet", plan.quietSeconds);
    number("moving", plan.moving);
    number("rough", plan.rough);
    number("strange", plan.strange);
    number("at", plan.singleAt);
    if (given.contains("single")) plan.single = static_cast<Fault>(placeOf(Names, given["single"]));
    if (given.contains("script")) plan.script = given["script"];
    number("chunk", plan.chunk);
    number("pace", plan.actsPerMinute);
    number("stay", plan.stay);
    if (given.contains("boards")) {
        plan.hotDrinkBoard = given["boards"].find('H') != std::string::npos;
        plan.sectorBoard = given["boards"].find('S') != std::string::npos;
    }
    if (given.contains("aim")) plan.aim = static_cast<Aim>(placeOf(Aims, given["aim"]));
    if (given.contains("pages")) plan.pages = split(given["pages"], ',');
    if (given.contains("acts")) plan.acts = numbersOf(given["acts"]);
    if (given.contains("faults")) {
        plan.strength.fill(0);
        for (const std::string& fault : split(given["faults"], ',')) {
            const std::vector<std::string> parts = split(fault, ':');
            plan.strength[placeOf(Names, parts[0])] = parts.size() > 1 ? std::stod(parts[1]) : 1;
        }
    }
    return plan;
}

}  // namespace kestrel::testing

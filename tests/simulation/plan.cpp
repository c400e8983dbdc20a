// What one simulated run is made of.
#include "simulation/plan.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <sstream>
#include <stdexcept>

#include "pages/registry.h"
#include "simulator/commands.h"
#include "simulator/faults.h"

namespace kestrel::testing {

namespace {

/// The numbers of a plan and their names.
template <class AnyPlan, class Visit>
void eachNumber(AnyPlan& plan, Visit&& visit) {
    visit("seconds", plan.seconds), visit("quiet", plan.quiet), visit("hot", plan.hot), visit("sector", plan.sector);
    visit("moving", plan.moving), visit("rough", plan.rough), visit("strange", plan.strange);
    visit("chunk", plan.chunk), visit("aim", plan.aim), visit("pace", plan.pace), visit("stay", plan.stay);
    visit("other", plan.other), visit("late", plan.late);
    visit("frame", plan.frame), visit("event", plan.event);
}

std::vector<std::string> split(const std::string& text, char mark) {
    std::vector<std::string> parts;
    std::istringstream in(text);
    for (std::string part; std::getline(in, part, mark);) parts.push_back(part);
    return parts;
}

int numberOf(const std::string& text) {
    const auto number = simulator::parseNumber(text, std::numeric_limits<int>::max());
    if (!number) throw std::invalid_argument("\"" + text + "\" is no number");
    return static_cast<int>(*number);
}

const std::string& checked(const std::string& name, const std::vector<std::string>& known) {
    if (std::find(known.begin(), known.end(), name) != known.end()) return name;
    throw std::invalid_argument("a plan knows no \"" + name + "\"");
}

Strengths strengthsOf(const std::string& text, const std::vector<std::string>& known) {
    Strengths strengths;
    for (const std::string& item : split(text, ',')) {
        const std::string name = item.substr(0, item.find(':'));
        strengths[checked(name, known)] = std::stod(item.substr(std::min(name.size() + 1, item.size())));
    }
    return strengths;
}

std::ostream& operator<<(std::ostream& out, const Strengths::value_type& strength) {
    return out << strength.first << ':' << strength.second;
}

std::string joined(const auto& items) {
    std::ostringstream out;
    for (const auto& item : items) out << (out.tellp() > 0 ? "," : "") << item;
    return out.str();
}

}  // namespace

std::uint64_t Dice::next() {
    std::uint64_t mixed = state_ += 0x9E3779B97F4A7C15;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    return mixed ^ (mixed >> 31);
}

Dice chanceOf(std::uint64_t seed, Chance subject, std::uint32_t part) {
    Dice ofSeed(seed);
    return Dice(ofSeed.next() ^ Dice((std::uint64_t{static_cast<std::uint32_t>(subject)} << 32) | part).next());
}

const std::vector<std::string>& allFaults() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> all;
        for (std::size_t i = 0; i < simulator::faultKindCount; ++i)
            all.emplace_back(nameOf(static_cast<simulator::FaultKind>(i)));
        return all;
    }();
    return names;
}

const std::vector<std::string>& allIncidents() {
    static const std::vector<std::string> names = {"noise",     "reset",      "lost",       "port",     "busy",
                                                   "stream",    "change",     "swap",       PortDenied, LoopBlocked,
                                                   DiskTrouble, WindowClosed, CablesChanged};
    return names;
}

Plan Plan::draw(std::uint64_t seed) {
    auto random = chanceOf(seed, Chance::Plan);
    Plan plan;
    plan.seed = seed;
    plan.seconds = static_cast<int>(random.between(20, 200));
    plan.hot = random.chance(0.85);
    plan.sector = random.chance(0.85);
    plan.moving = random.chance(0.5);
    plan.rough = random.chance(0.15);
    plan.strange = random.chance(0.25);
    plan.chunk = random.of(std::array{0, 1, 16, 16, 16, 250});
    plan.aim = random.of(std::array{All, All, All, All, All, Reads, Writes, Slaves});
    plan.pace = static_cast<int>(random.between(2, 60));
    const double density = random.of(std::array{0.0, 0.06, 0.15, 0.3, 0.5});
    for (const std::string& name : allFaults()) {
        const double rate = random.of(std::array{0.002, 0.01, 0.05, 0.25});
        if (random.chance(density)) plan.faults[name] = rate;
    }
    for (const std::string& name : allIncidents()) {
        const double aMinute = random.of(std::array{0.5, 2.0, 8.0});
        if (name == CablesChanged) continue;  // below
        if (random.chance(name == WindowClosed ? density / 10 : density)) plan.incidents[name] = aMinute;
    }
    for (auto count = random.between(1, 5); count > 0; --count) {
        const std::string name = random.of(AllPages()).first;
        if (std::find(plan.pages.begin(), plan.pages.end(), name) == plan.pages.end()) plan.pages.push_back(name);
    }
    plan.other = random.of(
        std::array<int, 8>{NoOther, NoOther, NoOther, NoOther, NoOther, SameIdentity, OtherMaster, OtherBoards});
    if (plan.other != NoOther) plan.incidents[CablesChanged] = random.of(std::array{0.5, 2.0});
    if (random.chance(0.1)) plan.late = static_cast<int>(random.between(1, 2));
    plan.drawActs();
    return plan;
}

void Plan::drawActs() {
    acts.resize(static_cast<std::size_t>(seconds * pace / 60));
    std::iota(acts.begin(), acts.end(), 0);
}

std::string Plan::text() const {
    std::ostringstream out;
    out << "seed=" << seed;
    eachNumber(*this, [&](const char* name, int value) { out << ' ' << name << '=' << value; });
    out << " single=" << single << " script=" << script << " faults=" << joined(faults)
        << " incidents=" << joined(incidents) << " pages=" << joined(pages);
    Plan whole = *this;
    whole.drawActs();
    if (acts != whole.acts) out << " acts=" << joined(acts);
    return out.str();
}

Plan Plan::parse(const std::string& line) {
    std::map<std::string, std::string> given;
    for (const std::string& item : split(line, ' '))
        given[item.substr(0, item.find('='))] = item.substr(item.find('=') + 1);
    if (!given.contains("seed")) throw std::invalid_argument("a plan needs a seed");
    Plan plan = draw(std::stoull(given["seed"]));
    given.erase("seed");
    const auto take = [&](const char* name, auto&& use) {
        const auto found = given.extract(name);
        if (found) use(found.mapped());
    };
    eachNumber(plan, [&](const char* name, int& value) {
        take(name, [&](const std::string& text) { value = numberOf(text); });
    });
    take("single", [&](const std::string& text) {
        if (!text.empty()) plan.single = checked(text, plan.event > 0 ? allIncidents() : allFaults());
    });
    take("script", [&](const std::string& text) { plan.script = text; });
    take("faults", [&](const std::string& text) { plan.faults = strengthsOf(text, allFaults()); });
    take("incidents", [&](const std::string& text) { plan.incidents = strengthsOf(text, allIncidents()); });
    take("pages", [&](const std::string& text) { plan.pages = split(text, ','); });
    plan.drawActs();
    take("acts", [&](const std::string& text) {
        plan.acts.clear();
        for (const std::string& number : split(text, ',')) plan.acts.push_back(numberOf(number));
    });
    if (!given.empty()) throw std::invalid_argument("a plan knows no \"" + given.begin()->first + "\"");
    return plan;
}

}  // namespace kestrel::testing

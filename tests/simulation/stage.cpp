// The machine under the program in a simulated run.
#include "simulation/stage.h"

#include <set>

#include "link/link_engine.h"
#include "platform/errors.h"

namespace kestrel::testing {

namespace {

constexpr std::size_t ParameterSize = 9;
constexpr std::size_t RefreshOffset = 3;
constexpr std::size_t HighestPreloadOffset = 8;

/// Titles of boxes that end a run or tell of trouble; questions have the page's own.
bool isKnown(const Message& message) {
    static const std::set<std::string> titles = {"ERROR", "Serial", "Wrong file", "Kestrel", "Error"};
    return message.buttons == Message::Buttons::YesNo || titles.contains(message.title) ||
           message.title.starts_with("ERROR ");
}

}  // namespace

Stage::Stage(const Plan& plan) : answers_(chanceOf(plan.seed, Chance::Answer)) {
    install(KESTREL_INSTALLATION);
    setPlatform(this);
    put("kestrel.ini", "Com=1\r\nLingua=Italiano\r\n");
    if (plan.strange) changeIndexFiles(plan.seed);
}

/// Any of the 256 refresh bytes for one record in five, so that countdowns under way, long ones, and records that are
/// repeated until their board answers all occur; and a highest preloaded byte that only a reply clears.
void Stage::changeIndexFiles(std::uint64_t seed) {
    auto random = chanceOf(seed, Chance::Files);
    for (auto& [path, content] : files) {
        if (!path.ends_with(".inx") || content.size() % ParameterSize != 0) continue;
        for (std::size_t at = 0; at < content.size(); at += ParameterSize)
            if (random.chance(0.2))
                content[at + RefreshOffset] = content[at + HighestPreloadOffset] =
                    static_cast<char>(random.between(0, 255));
    }
}

std::unique_ptr<TimerBackend> Stage::makeTimer(std::function<void()> onExpiry) {
    // The timer that asks has just been switched on: of the link's own, the one that was off until now.
    std::size_t clock = 0;
    while (clock < known_.size() && (known_[clock] || !linkTimers()[clock]->Enabled)) ++clock;
    if (clock < known_.size()) known_[clock] = true;
    return VirtualPlatform::makeTimer([this, clock, onExpiry = std::move(onExpiry)] {
        checks->beforeTimer(static_cast<Clock>(clock));
        onExpiry();
    });
}

bool Stage::begin(const std::string& incident, Dice& random) {
    if (incident == PortDenied) {
        const int reason = random.of(
            std::array{error_number::SerialBadPort, error_number::SerialPortInUse, error_number::SerialNoPermission});
        if (!openFailures.erase(Link().ComPort)) openFailures = {{Link().ComPort, {reason, "denied"}}};
    } else if (incident == DiskTrouble) {
        diskIsSpoiled_ = true;
        unwritable = {directory.generic_string(), (directory / "kestrel.ini").generic_string()};
        if (random.chance(0.5)) put("English.lng", "a\r\n");
        if (random.chance(0.2)) unreadable.insert((directory / "Deutsch.lng").generic_string());
    }
    return incident == PortDenied || incident == DiskTrouble;
}

Message::Answer Stage::answerTo(const Message& message) {
    if (message.buttons == Message::Buttons::Ok) return Message::Answer::Ok;
    const bool first = answers_.chance(0.7);
    if (message.buttons == Message::Buttons::YesNo) return first ? Message::Answer::Yes : Message::Answer::No;
    return first ? Message::Answer::Retry : Message::Answer::Cancel;
}

Message::Answer Stage::showMessage(const Message& message) {
    require(isKnown(message), "boxes have known texts", message.title, ": ", message.text);
    require(!boxOpen_, "one box at a time", message.text, " over ", lastBox);
    boxOpen_ = true;
    checks->ledger.boxOpens();
    lastBox = message.text;
    ++checks->counts[Boxes];
    // While ports are being searched the link is in the middle of an act, which the model does not follow.
    if (started && !checks->isSearching())
        for (auto events = answers_.between(0, 60); events > 0; --events) step();
    boxOpen_ = false;
    const Message::Answer answer = answerTo(message);
    checks->ledger.answered(message, answer);
    return answer;
}

}  // namespace kestrel::testing

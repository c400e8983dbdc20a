// Names, text form and chance of the faults.
// The names stand in the order of the kinds.
#include "simulator/faults.h"

#include <charconv>
#include <stdexcept>

namespace kestrel::simulator {
namespace {

struct Kind {
    std::string_view name;
    std::string_view what;
};
constexpr std::array<Kind, faultKindCount> kinds{{
    {"silent", "the request was not heard, or the reply was lost"},
    {"slow", "the reply comes 100 to 900 ms late"},
    {"late", "the reply comes 1 to 5 s late"},
    {"drop", "a byte of the reply is missing"},
    {"extra", "a byte too many stands in the reply"},
    {"flip", "one bit of the reply is wrong"},
    {"ack", "a write is acknowledged with a wrong byte"},
    {"echo", "the request comes back before the reply"},
    {"noise", "some bytes arrive while the line is idle"},
    {"reset", "the board restarts"},
    {"lost", "the board is away for some seconds"},
    {"port", "the whole port is away for some seconds"},
    {"request", "one bit of the request is wrong"},
    {"part", "the boards get only a part of the request, or none"},
    {"noeffect", "a write is acknowledged and forgotten"},
    {"clamp", "a write is acknowledged, half of it is stored"},
    {"blind", "the reply is wrong, and its sum does not show it"},
    {"collide", "two boards speak at once"},
    {"busy", "the boards are busy for seconds, then answer all"},
    {"stream", "bytes without end, for up to 1.5 s"},
    {"change", "the parameter last asked for changes by itself"},
    {"swap", "all memories become those of another machine"},
}};

double parseRate(std::string_view name, std::string_view text) {
    double rate = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), rate);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    if (!whole || !(rate >= 0 && rate <= 1)) {
        throw std::invalid_argument("the rate of fault \"" + std::string(name) +
                                    "\" must be a number from 0 to 1, not \"" + std::string(text) + "\"");
    }
    return rate;
}

}  // namespace

std::string_view nameOf(FaultKind kind) { return kinds[static_cast<std::size_t>(kind)].name; }

FaultKind kindNamed(std::string_view name) {
    std::string known;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        if (kinds[i].name == name) return static_cast<FaultKind>(i);
        known.append(i == 0 ? "" : ", ").append(kinds[i].name);
    }
    throw std::invalid_argument("unknown fault \"" + std::string(name) + "\" (known: " + known + ")");
}

std::string faultHelp() {
    constexpr std::size_t nameWidth = 10;
    std::string all;
    for (const Kind& kind : kinds) {
        all.append("  ").append(kind.name).append(nameWidth - kind.name.size(), ' ').append(kind.what).append("\n");
    }
    return all;
}

FaultPlan parseFaults(std::string_view text) {
    FaultPlan plan;
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        const std::string_view item = text.substr(0, comma);
        text = comma == std::string_view::npos ? std::string_view() : text.substr(comma + 1);
        const std::size_t equals = item.find('=');
        if (equals == std::string_view::npos) {
            throw std::invalid_argument("a fault is written NAME=RATE, not \"" + std::string(item) + "\"");
        }
        const std::string_view name = item.substr(0, equals);
        plan.setRate(kindNamed(name), parseRate(name, item.substr(equals + 1)));
    }
    return plan;
}

FaultSource::FaultSource(const FaultPlan& plan, std::uint64_t seed) : plan_(plan) {
    for (std::uint32_t kind = 0; kind < faultKindCount; ++kind) generators_.emplace_back(seed, Stream::Faults, kind);
}

bool FaultSource::strikes(FaultKind kind) {
    const double rate = plan_.rate(kind);
    return rate > 0 && of(kind).chance(rate);
}

}  // namespace kestrel::simulator

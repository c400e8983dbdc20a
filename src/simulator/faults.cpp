// Names, text form and chance of the faults.
// The names stand in the order of the kinds.
#include "simulator/faults.h"

#include <charconv>
#include <stdexcept>

namespace kestrel::simulator {
namespace {

constexpr std::array<std::string_view, faultKindCount> names{"silent", "slow", "late",  "drop",  "extra", "flip",
                                                             "ack",    "echo", "noise", "reset", "lost",  "port"};

FaultKind kindNamed(std::string_view name) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] == name) return static_cast<FaultKind>(i);
    }
    throw std::invalid_argument("unknown fault \"" + std::string(name) + "\" (known: " + faultNames() + ")");
}

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

std::string_view nameOf(FaultKind kind) { return names[static_cast<std::size_t>(kind)]; }

std::string faultNames() {
    std::string all;
    for (const std::string_view name : names) all.append(all.empty() ? "" : ", ").append(name);
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

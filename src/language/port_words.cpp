// The words about a port and what to check when nothing answers on it.
#include "language/port_words.h"

#include <array>

#include "language/window_texts.h"

namespace kestrel {

namespace {

constexpr std::array English = {"Is the machine switched on?",
                                "Is the cable plugged in at both ends?",
                                "Tried:",
                                "Open the demo",
                                "no board answers",
                                "the port is gone",
                                "closed",
                                "not there",
                                "in use by another program",
                                "in use by",
                                "no permission",
                                "needs the group",
                                "then log in again"};
constexpr auto First = static_cast<int>(PortWord::IsMachineOn);
static_assert(English.size() == static_cast<std::size_t>(PortWord::LogInAgain) - First + 1);

}  // namespace

std::string portWord(PortWord which) {
    const auto line = static_cast<int>(which);
    return WindowText(line, English.at(static_cast<std::size_t>(line - First)));
}

}  // namespace kestrel

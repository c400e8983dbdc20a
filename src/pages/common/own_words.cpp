// What the pages say of themselves.
#include "pages/common/own_words.h"

#include <array>

#include "language/window_texts.h"

namespace kestrel {

namespace {

// They stand where the section has room: the first ones at its end, the others in its middle.
constexpr int FirstLine = 781;
constexpr int FirstCount = 20;
constexpr int SecondLine = 651;

constexpr int lineOf(int index) { return index < FirstCount ? FirstLine + index : SecondLine + index - FirstCount; }

constexpr std::array English = {
    "Inputs",
    "Outputs",
    "Outputs: locked until the test runs",
    "Chosen:",
    "To check afterwards:",
    "Sum",
    "hours:minutes since the page was opened",
    "Values: by the pointer or Shift+arrows",
    "When",
    "today",
    "yesterday",
    "%1 days ago",
    "%1 weeks ago",
    "%1 months ago",
    "%1 years ago",
    "Copy the list",
    "Show the code",
    "Valves",
    "Pairing of cold valves",
    "Valve paired with cold valve",
    "Credit limits",
    "No = no, Si = yes",
    "Valve",
    "Mixer",
    "1st powder",
    "2nd powder",
    "3rd powder",
    "FB1: brewer FB1. Only the valve time counts.",
    "FB2: brewer FB2. Only the valve time counts.",
    "With preselection: the buttons count as 10 to 18",
    "The beverage costs nothing",
    "hours",
    "minutes",
    "day",
    "month",
    "year",
    "Revision of the power board",
    "Closes the page",
    "The machine does not answer it.",
};
static_assert(English.size() == static_cast<std::size_t>(Own::NoAnswer) + 1);

}  // namespace

std::string OwnWord(Own which) {
    const auto index = static_cast<int>(which);
    return WindowText(lineOf(index), English.at(static_cast<std::size_t>(index)));
}

}  // namespace kestrel

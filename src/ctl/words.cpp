// The words that kestrelctl says to people.
#include "ctl/words.h"

#include <array>

#include "language/language_files.h"
#include "platform/errors.h"
#include "platform/module_state.h"

namespace kestrel {

struct WordState {
    std::vector<std::string> lines;
};
template class Module<WordState>;

namespace ctl {

namespace {

constexpr std::array English = {
    "index file missing: %1",
    "this program is not made for a master %1",
    "not there",
    "type %1, software %2, release %3, kind %4",
    "revision %1",
    "%1 s left",
    "the line is silent",
    "this is no file of settings",
    "there is more behind the sum",
    "the file is cut: its sum is missing",
    "this line cannot be understood",
    "the sum does not fit: the file was changed (--edited takes it as it is)",
    "\"%1\" is no number",
    "%1 stands there twice",
    "there is no parameter %1",
    "the head names no board %1",
    "the value %1 and the raw value %2 do not agree: %2 is %3",
    "line %1",
    "belonging to one machine alone (--own)",
    "being no setting",
    "without a value in the file",
    "could not be read",
    "decided by the payment system",
    "the machine having other decimals than the file",
    "not in use on this machine",
    "%1 is not within %2 to %3",
    "the %1 board is another one: the file is for %2, this is %3",
    "Reading",
    "another machine is on the line",
    "the parameter has %1, its copy %2",
    "a board that the master reports does not answer",
    "%1 of %2 values are in %3",
    "incomplete: %1 of %2 values are in %3",
    "the machine",
    "nothing differs",
    "%1 values could not be compared",
    "%1 (%2), %3 (%4)",
    "written",
    "not written",
    "not known whether old or new",
    "not taken",
    "the machine has another value",
    "there is nothing to write",
    "Write %1 values into machine %2? [y/N]",
    "nothing was written",
    "Writing",
    "%1 left out, %2",
    "would be written",
    "the line was interrupted: nothing more was written",
    "%1 of %2 written",
    "run it again to finish",
    "there is no serial device: plug the adapter in",
    "there are several serial devices, name one with --port: %1",
    "can be opened",
    "%1 exchanges, %2 a second; %3 bad, %4 without reply: %5 %",
    "Sales and alarms",
    "none",
    "bytes come although nothing was asked (%1): check the cable's shield and keep it away from motors",
    "nothing answers: switch the machine on and plug the cable in at both ends",
    "what is sent comes back by itself: the lines of the plug touch, or the adapter is not for this use; try another "
    "one",
    "every answer is garbage: this is no machine of this kind, or it speaks at another speed than 19200",
    "%1 of %2 exchanges were spoiled: check plugs and cable, or take a shorter one",
    "the master reports the %1 board, which does not answer: check its cable and supply",
    "put the file of this release beside the program, or name its directory with --directory",
    "a board answers on %1",
    "all is well",
    "what was to be printed could not be written",
    "prices",
    "recipes",
    "times",
    "payment",
    "options",
    "clock",
    "temperatures",
    "machine",
    "counters",
    "alarms",
};
constexpr auto First = static_cast<std::size_t>(Word::IndexFileMissing);
static_assert(English.size() == static_cast<std::size_t>(Word::GroupAlarms) - First + 1);

/// In the order of their words.
constexpr std::array Groups = {"prices", "recipes",      "times",   "payment",  "options",
                               "clock",  "temperatures", "machine", "counters", "alarms"};
static_assert(Groups.size() ==
              static_cast<std::size_t>(Word::GroupAlarms) - static_cast<std::size_t>(Word::GroupPrices) + 1);

}  // namespace

void loadWords(const std::string& language) {
    try {
        stateOf<WordState>().lines = LanguageFileLines("terminal/" + language + ".lng");
    } catch (const RunTimeError&) {
        stateOf<WordState>().lines.clear();
    }
}

std::string say(Word which, const std::vector<std::string>& values) {
    const auto line = static_cast<std::size_t>(which) - First;
    const std::vector<std::string>& lines = stateOf<WordState>().lines;
    const bool isWhole = lines.size() == English.size();  // else the file is of another version
    const std::string form = isWhole ? lines[line] : English.at(line);
    std::string text;
    for (std::size_t i = 0; i < form.size(); ++i) {
        const std::size_t place =
            form[i] == '%' && i + 1 < form.size() ? static_cast<std::size_t>(form[i + 1] - '1') : values.size();
        if (place < values.size()) {
            text += values[place];
            ++i;
        } else {
            text += form[i];
        }
    }
    return text;
}

std::string groupName(const std::string& group) {
    for (std::size_t i = 0; i < Groups.size(); ++i)
        if (Groups.at(i) == group) return say(static_cast<Word>(static_cast<std::size_t>(Word::GroupPrices) + i));
    return group;
}

}  // namespace ctl
}  // namespace kestrel

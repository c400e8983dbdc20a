// What is on the line, in words.
#include "shell/line_status.h"

#include <algorithm>
#include <array>
#include <string>

#include "language/window_texts.h"
#include "link/changes.h"
#include "link/identification.h"
#include "link/link_engine.h"
#include "link/recheck.h"
#include "link/settings.h"
#include "link/silence.h"
#include "platform/numbers.h"
#include "platform/platform.h"
#include "shell/main_window.h"

namespace kestrel {

namespace {

constexpr int MasterLine = 710;
constexpr int NoBoardLine = 711;
constexpr int MachineLine = 712;
constexpr int NoAnswerLine = 713;
constexpr int BoardSilentLine = 714;
constexpr int InterruptedLine = 715;
constexpr int HeldLine = 716;
constexpr int OtherMachineLine = 717;
constexpr const char* Between = "  ·  ";

constexpr std::array<Setting, Banks> Revisions = {master::FirmwareRevision, hot_drink::FirmwareRevision,
                                                  sector::FirmwareRevision};

std::string with(std::string text, const std::string& first, const std::string& second = {}) {
    for (const auto& [mark, value] : {std::pair{"%1", &first}, std::pair{"%2", &second}})
        if (const auto at = text.find(mark); at != std::string::npos) text.replace(at, 2, *value);
    return text;
}

std::string nameOf(int bank) {
    constexpr std::array<const char*, Banks> Names = {"master", "Alder", "Cedar"};
    const char* name = Names[static_cast<std::size_t>(bank)];
    return bank == 0 ? WindowText(MasterLine, name) : name;
}

/// The release of its table where a board has not been asked for its revision.
std::string revisionOf(int bank) {
    const Setting& revision = Revisions[static_cast<std::size_t>(bank)];
    if (ParamIsFresh(revision)) return formatScaled(ParamRead(revision), 1);
    return bank == 0 ? formatScaled(BoardRevision(), 1) : "r" + std::to_string(KnownIdentity(bank).release);
}

std::string whoIsThere() {
    std::string text = Link().Device == SimulatedDevice ? SimulatedDeviceText() : Link().Device;
    for (int bank = 0; bank < Banks; ++bank)
        text += Between + (BoardPresent(bank) ? nameOf(bank) + " " + revisionOf(bank)
                                              : with(WindowText(NoBoardLine, "no %1"), nameOf(bank)));
    if (ParamIsFresh(master::MachineNumber))
        text += Between + with(WindowText(MachineLine, "machine %1"), std::to_string(ParamRead(master::MachineNumber)));
    return text;
}

std::string silence() {
    int worst = 0;
    for (int bank = 0; bank < Banks; ++bank)
        if (BoardPresent(bank) && SecondsWithoutAnswer(bank) > SecondsWithoutAnswer(worst)) worst = bank;
    const int seconds = SecondsWithoutAnswer(worst);
    if (seconds < SilenceSeconds) return {};
    if (worst == 0) return with(WindowText(NoAnswerLine, "no answer for %1 s"), std::to_string(seconds));
    return with(WindowText(BoardSilentLine, "%1: no answer for %2 s"), nameOf(worst), std::to_string(seconds));
}

std::string alarm() {
    std::string text;
    if (IsOtherMachine())
        text = WindowText(OtherMachineLine, "another machine is on the line");
    else if (LineIsClosed() || IsReadingAgain())
        text = WindowText(InterruptedLine, "the line is interrupted");
    for (const std::string& more : {Link().PortTrouble, silence()})
        if (!more.empty()) text += (text.empty() ? "" : Between) + more;
    const auto held = LineIsClosed() || WritesAreHeld() ? std::count_if(Changes().begin(), Changes().end(),
                                                                        [](const Change& each) { return !each.copy; })
                                                        : 0;
    if (held > 0)
        text += (text.empty() ? "" : Between) + with(WindowText(HeldLine, "changes held: %1"), std::to_string(held));
    return text;
}

}  // namespace

void ShowLineStatus() {
    LineStatus& status = MDIForm1().Line;
    status.Text = whoIsThere();
    status.Alarm = alarm();
}

void FollowLine() {
    OnLineNews(ShowLineStatus);
    ShowLineStatus();
}

}  // namespace kestrel

// Speaks with the user for the link.
#include "shell/line_attendant.h"

#include "language/window_texts.h"
#include "platform/platform.h"
#include "shell/start_up.h"

namespace kestrel {

namespace {

constexpr int HeldLine = 680;
constexpr int SendLine = 681;
constexpr int OtherBoardsLine = 682;
constexpr int StartAnewLine = 683;
constexpr int LeftLine = 684;
constexpr int SuspendedLine = 685;

std::string listOf(const std::vector<PageChanges>& pages) {
    std::string list;
    for (const PageChanges& each : pages) list += "\n" + each.page + ": " + std::to_string(each.count);
    return list;
}

Message::Answer show(const std::string& text, Message::Buttons buttons) {
    Message message;
    message.title = "Kestrel";
    message.text = text;
    message.icon = Message::Icon::Exclamation;
    message.buttons = buttons;
    return ShowMessage(message);
}

}  // namespace

bool LineAttendant::wantsHeldSent(const std::vector<PageChanges>& held) {
    const std::string text = WindowText(HeldLine, "The line was interrupted. These changes have not gone out:") +
                             listOf(held) + "\n" + WindowText(SendLine, "Send them to this machine?");
    return show(text, Message::Buttons::YesNo) == Message::Answer::Yes;
}

bool LineAttendant::wantsToStartAnew() {
    const std::string text =
        WindowText(OtherBoardsLine, "Another machine is on the line. The open pages show the one before.") + "\n" +
        WindowText(StartAnewLine, "Close them and start anew?");
    return show(text, Message::Buttons::YesNo) == Message::Answer::Yes;
}

void LineAttendant::startAnew() { StartAnew(); }

void LineAttendant::tellLeft(const std::vector<PageChanges>& left) {
    const std::string text = WindowText(LeftLine, "The machine has not confirmed these changes:") + listOf(left) +
                             "\n" +
                             WindowText(SuspendedLine, "What is still due goes out when its page is opened again.");
    show(text, Message::Buttons::Ok);
}

}  // namespace kestrel

// Asking a board who it is.
#include "link/identification.h"

#include <array>
#include <optional>
#include <string>

#include "link/index_files.h"
#include "link/line_rest.h"
#include "link/line_session.h"
#include "link/link_engine.h"
#include "link/observer.h"
#include "link/param_table.h"
#include "platform/module_state.h"
#include "platform/platform.h"

namespace kestrel {

struct IdentityState {
    int revision = 0;
    int powerBoardRevision = 0;
};
template class Module<IdentityState>;
template class Module<BoardsOnTheLine>;

namespace {

constexpr int RequiredKind = 18;
constexpr int RequiredType = 256;
constexpr int SmallestRevision = 23;

constexpr int RestMs = 5;     ///< about ten characters
constexpr int AnswerMs = 50;  ///< within which a board that is not busy has answered, the adapter's delay included
constexpr int ReadingsAllowed = 5;

/// In the order in which they are read; the last is the master's alone.
constexpr std::array Questions = {ident::Probe,   ident::Release,  ident::Software, ident::Kind,
                                  ident::TypeLow, ident::TypeHigh, ident::Revision};
using Reading = std::array<int, Questions.size()>;

IdentityState& state() { return stateOf<IdentityState>(); }

bool userRetries() {
    Message message;
    message.title = "Serial";
    message.text = "Board Not Ready\nCheck serial !";
    message.icon = Message::Icon::Exclamation;
    message.buttons = Message::Buttons::RetryCancel;
    const LinkState& link = Link();
    const bool portIsWell = link.PortTrouble.empty();
    message.detail = portIsWell ? platform().portTrouble(link.ComPort, PortTrouble::NoBoard) : link.PortTrouble;
    message.isAboutTheLine = true;
    return ShowMessage(message) == Message::Answer::Retry;
}

/// One identity exchange: the value, or none when the board of a slave bank does not answer.
std::optional<int> ask(int bank, int number) {
    const LinkState& link = Link();
    for (;;) {
        Await([&] { SendIdentityQuestion(IdentTable(bank, number)); }, [&] { return link.LinkIdle; });
        CloseExchange();  // no repeat may go out behind a box
        if (!link.ReplyData.empty()) {
            SetBoardPresent(bank, true);
            return link.ReplyData.front();
        }
        ExpectLateAnswer();
        if (bank != 0) {
            SetBoardPresent(bank, false);
            Link().ReplyData = {0};
            return std::nullopt;
        }
        if (!userRetries()) EndProcess(EndedByTrouble);
        LetLateAnswersPass();
    }
}

/// Lets the line come to rest before a question; longer when something has been spoiled since the last time, since that
/// may have left a question that is yet to be answered.
class Rest {
  public:
    void operator()(int milliseconds) {
        LetLineRest(milliseconds);
        if (isSpoiled()) {
            LetLineRest(ReplyTimeoutMs);
            ExpectLateAnswer();
        }
        known_ = Link().SpoiledArrivals;
    }
    bool isSpoiled() const { return known_ != Link().SpoiledArrivals; }

  private:
    std::int64_t known_ = Link().SpoiledArrivals;
};

/// Asks everything once, each question on a line at rest; none when the board of a slave bank does not answer.
std::optional<Reading> readOnce(int bank) {
    Reading reading{};
    Rest rest;
    bool isDoubtful = false;
    const std::size_t count = bank == 0 ? Questions.size() : Questions.size() - 1;
    for (std::size_t i = 0; i < count; ++i) {
        rest(RestMs);
        Link().RestTimer.Interval = AnswerMs;
        Link().RestTimer.Enabled = true;
        const std::optional<int> value = ask(bank, Questions[i]);
        const bool isSlow = !Link().RestTimer.Enabled;
        Link().RestTimer.Enabled = false;
        if (!value) return std::nullopt;
        reading[i] = *value;
        // A slow answer may be the one to an older question, and its own is then yet to come.
        if (isSlow && (LateAnswerIsExpected() || rest.isSpoiled())) isDoubtful = true;
    }
    if (isDoubtful) ExpectLateAnswer(), LetLateAnswersPass();
    rest(AnswerMs);
    reading.front() = 0;  // the probe tells nothing but that a board answers
    return reading;
}

/// Reads until it can be believed: at once when nothing was spoiled, otherwise when two readings in a row agree. That a
/// board is not there is believed only of a reading that nothing spoiled.
std::optional<Reading> readIdentity(int bank) {
    for (;;) {
        std::optional<Reading> last;
        for (int number = 1; number <= ReadingsAllowed; ++number) {
            const std::int64_t known = Link().SpoiledArrivals;
            const std::optional<Reading> reading = readOnce(bank);
            const bool isClean = known == Link().SpoiledArrivals;
            if (number == 1 ? isClean : reading == last && (reading || isClean)) return reading;
            last = reading;
        }
        SetBoardPresent(bank, false);
        if (bank != 0) return std::nullopt;
        if (!userRetries()) EndProcess(EndedByTrouble);
    }
}

void refuseIncompatible(const BoardIdentity& identity) {
    const std::string text = Incompatibility(identity);
    if (text.empty()) return;
    Message message;
    message.title = "ERROR";
    message.text = text;
    ShowMessage(message);
    EndProcess(EndedByTrouble);
}

}  // namespace

void SendIdentityQuestion(const IdentRecord& record) {
    LinkState& link = Link();
    Request& request = link.RequestBytes;
    request.Addr2 = record.Addr2;
    request.Addr1 = record.Addr1;
    request.Command = record.Command;
    request.Addr0 = record.Addr0;
    request.Data = {record.Addr0};
    request.n = 0;
    link.ReplyData.clear();
    tell(&LinkObserver::askingIdentity);
    LinkSendFrame();
}

BoardIdentity AskIdentity(int bank) {
    const std::optional<Reading> reading = readIdentity(bank);
    if (!reading) return {};
    const auto [probe, release, software, kind, typeLow, typeHigh, ofMaster] = *reading;
    if (bank == 0) state().revision = ofMaster;
    return {release, software, kind, typeLow + 256 * typeHigh};
}

std::string Incompatibility(const BoardIdentity& identity) {
    std::string text;
    if (identity.kind != RequiredKind) text = "Board\nNot Compatible";
    if (identity.boardType != RequiredType) text = "Board Type\nNot Compatible";
    if (state().revision < SmallestRevision || identity.software != Boards().requiredSoftware[0])
        text = "Board Software\nNot Compatible";
    return text;
}

BoardIdentity IdentifyBoard(int bank) {
    const BoardIdentity identity = AskIdentity(bank);
    if (bank == 0 && BoardPresent(bank)) refuseIncompatible(identity);
    return identity;
}

int BoardRevision() { return state().revision; }

void SetBoardRevision(int value) { state().revision = value; }

int PowerBoardRevision() { return state().powerBoardRevision; }

void SetPowerBoardRevision(int tenths) { state().powerBoardRevision = tenths; }

}  // namespace kestrel

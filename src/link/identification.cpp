// Asking a board who it is.
// See identification.h.
#include "link/identification.h"

#include <optional>
#include <string>

#include "link/index_files.h"
#include "link/link_engine.h"
#include "link/param_table.h"
#include "platform/platform.h"

namespace kestrel {

namespace {

constexpr int RequiredKind = 18;
constexpr int RequiredType = 256;
constexpr int SmallestRevision = 23;

int revision = 0;
int powerBoardRevision = 0;

void askOnce(const IdentRecord& record) {
    LinkState& link = Link();
    link.ReplyTimedOut = false;
    link.Timer5.Enabled = false;
    link.Timer5.Enabled = true;
    SendIdentityQuestion(record);
    do platform().PumpEvents();
    while (!link.LinkIdle && !link.ReplyTimedOut);
    CloseExchange();  // no repeat may go out behind a box
}

bool userRetries() {
    Message message;
    message.title = "Serial";
    message.text = "Board Not Ready\nCheck serial !";
    message.icon = Message::Icon::Exclamation;
    message.buttons = Message::Buttons::RetryCancel;
    message.detail = Link().PortTrouble;
    return platform().showMessage(message) == Message::Answer::Retry;
}

/// One identity exchange: the value, or none when the board of a slave bank does not answer.
std::optional<int> ask(int bank, int number) {
    const LinkState& link = Link();
    for (;;) {
        askOnce(IdentTable(bank, number));
        if (!link.ReplyData.empty()) {
            SetBoardPresent(bank, true);
            return link.ReplyData.front();
        }
        if (bank != 0) {
            SetBoardPresent(bank, false);
            Link().ReplyData = {0};
            return std::nullopt;
        }
        if (!userRetries()) EndProcess(EndedByTrouble);
    }
}

void refuseIncompatible(const BoardIdentity& identity) {
    std::string text;
    if (identity.kind != RequiredKind) text = "Board\nNot Compatible";
    if (identity.boardType != RequiredType) text = "Board Type\nNot Compatible";
    if (revision < SmallestRevision || identity.software != Boards().requiredSoftware[0])
        text = "Board Software\nNot Compatible";
    if (text.empty()) return;
    Message message;
    message.title = "ERROR";
    message.text = text;
    platform().showMessage(message);
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
    LinkSendFrame();
}

BoardIdentity IdentifyBoard(int bank) {
    BoardIdentity identity;
    int typeLow = 0;
    int typeHigh = 0;
    struct Exchange {
        int record;
        int* value;
    };
    int ignored = 0;
    const Exchange exchanges[] = {
        {ident::Probe, &ignored},      {ident::Release, &identity.release}, {ident::Software, &identity.software},
        {ident::Kind, &identity.kind}, {ident::TypeLow, &typeLow},          {ident::TypeHigh, &typeHigh},
    };
    for (const Exchange& exchange : exchanges) {
        const std::optional<int> value = ask(bank, exchange.record);
        if (!value) return {};
        *exchange.value = *value;
    }
    identity.boardType = typeLow + 256 * typeHigh;
    if (bank != 0) return identity;
    revision = *ask(bank, ident::Revision);
    refuseIncompatible(identity);
    return identity;
}

int BoardRevision() { return revision; }

void SetBoardRevision(int value) { revision = value; }

int PowerBoardRevision() { return powerBoardRevision; }

void SetPowerBoardRevision(int tenths) { powerBoardRevision = tenths; }

void ResetIdentification() {
    revision = 0;
    powerBoardRevision = 0;
}

}  // namespace kestrel

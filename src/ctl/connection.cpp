// The way to a machine.
#include "ctl/connection.h"

#include "ctl/line_work.h"
#include "ctl/words.h"
#include "link/index_files.h"
#include "link/link_engine.h"
#include "link/presence.h"
#include "link/recheck.h"
#include "link/settings.h"
#include "platform/errors.h"

namespace kestrel::ctl {

namespace {

constexpr int OnlyPort = 1;
constexpr int Panels = 4;
constexpr int AsksAllowed = 3;      ///< of a board that the master reports
constexpr int SecondsOfOneAsk = 6;  ///< a silent question, and what may still come of it
constexpr std::array Slaves = {std::pair{Board::HotDrink, master::HotDrinkPresence},
                               std::pair{Board::Sector, master::SectorPresence}};

}  // namespace

Message::Answer answerMessage(Context& context, const Message& message) {
    if (message.buttons != Message::Buttons::RetryCancel) {
        context.out.remark(message.text + (message.detail.empty() ? "" : ": " + message.detail));
        return Message::Answer::Ok;
    }
    if (context.endsWanted() == 0 && ++context.silences * SecondsOfOneAsk < context.options.wait)
        return Message::Answer::Retry;
    throw RunTimeError(error_number::DeviceUnavailable, message.detail);
}

Connection::Connection(Context& context) : context_(context) {
    context.silences = 0;
    for (int panel = 1; panel < Panels; ++panel) statusBar_.addPanel();
    SetAttendant(this);
    InitBoardTables();
    try {
        LoadIdentityFiles();
    } catch (const RunTimeError& error) {
        throw RunTimeError(error.number(), say(Word::IndexFileMissing, {error.what()}));
    }
    openPort();
    for (const Board which : {Board::Master, Board::HotDrink, Board::Sector}) ask(which);
    CurrentBank = 0;
    const BoardOnTheLine& master = board(Board::Master);
    if (const std::string why = Incompatibility(master.identity); !why.empty())
        masterTrouble_ = say(Word::NotCompatible, {ParameterFileName(master.identity)});
    else if (!master.fileTrouble.empty())
        masterTrouble_ = say(Word::IndexFileMissing, {master.fileTrouble});
}

Connection::LinkStops::~LinkStops() {
    StopLink();
    SetAttendant(nullptr);
    Link().Comm1.reset();
}

void Connection::openPort() {
    context_.findDevice();
    LinkState& link = Link();
    SetUpLink(statusBar_, {});
    link.ComPort = OnlyPort;
    link.LinkSetup = true;
    link.Comm1->CommPort(OnlyPort);
    link.Comm1->PortOpen(true);
    NotePortDevice();
}

void Connection::ask(Board which) {
    BoardOnTheLine& board = boards_[static_cast<std::size_t>(which)];
    CurrentBank = BankOf(which);
    board.identity = AskIdentity(CurrentBank);
    board.isThere = BoardPresent(CurrentBank);
    if (!board.isThere) return;
    RememberIdentity(CurrentBank, board.identity);
    board.indexFile = ParameterFileName(board.identity);
    try {
        LoadParameterFile(board.indexFile);
    } catch (const RunTimeError& error) {
        board.fileTrouble = error.what();
        SetBoardPresent(CurrentBank, false);
    }
}

void Connection::begin() {
    if (!masterTrouble_.empty()) throw RunTimeError(error_number::DeviceUnavailable, masterTrouble_);
    LinkState& link = Link();
    for (int asked = 0;; ++asked) {
        link.LinkSetup = false;
        EndExchange();
        work_ = std::make_unique<LineWork>(context_);
        link.Timer1.Enabled = true;
        missing_.clear();
        Values presence;
        for (const auto& [which, word] : Slaves) {
            if (board(which).isThere) continue;
            work_->read({PlaceOf(word)}, presence);
            const auto found = presence.find(PlaceOf(word));
            if (found != presence.end() && SaysPresent(found->second)) missing_.push_back(which);
        }
        if (missing_.empty() || asked == AsksAllowed) return;
        while (!link.LinkIdle) platform().PumpEvents();
        link.Timer1.Enabled = false;
        link.LinkSetup = true;
        work_.reset();
        for (const Board which : missing_) ask(which);
        CurrentBank = 0;
    }
}

std::string Connection::lack() const {
    if (!missing_.empty()) return say(Word::BoardIsSilent);
    for (const BoardOnTheLine& board : boards_)
        if (!board.fileTrouble.empty()) return say(Word::IndexFileMissing, {board.fileTrouble});
    return {};
}

bool Connection::wantsToStartAnew() {
    work_->otherBoardsCame();
    return false;
}

}  // namespace kestrel::ctl

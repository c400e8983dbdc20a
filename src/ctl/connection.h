// The way to a machine: the open port, the boards behind it and their tables.
// It says what is wrong with the line in the user's language, and waits as long as the user allows.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/setting.h"
#include "ctl/context.h"
#include "ctl/line_work.h"
#include "link/attendant.h"
#include "link/identification.h"
#include "link/param_table.h"
#include "platform/platform.h"
#include "platform/status_bar.h"

namespace kestrel::ctl {

struct BoardOnTheLine {
    bool isThere = false;
    BoardIdentity identity;
    std::string indexFile;    ///< that its identity asks for
    std::string fileTrouble;  ///< why that cannot be read; empty: it can
    bool isUsable() const { return isThere && fileTrouble.empty(); }
};

class Connection : private LinkAttendant {
  public:
    /// Opens the port and asks the boards who they are. What prevents that is a RunTimeError for the user.
    explicit Connection(Context& context);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    const BoardOnTheLine& board(Board which) const { return boards_[static_cast<std::size_t>(which)]; }
    /// Why the master cannot be worked with; empty where it can.
    const std::string& masterTrouble() const { return masterTrouble_; }
    /// Lets the scan go. A master that cannot be worked with is a RunTimeError. A board that the master knows of and
    /// that has not answered is asked again.
    void begin();
    /// Boards that the master reports and that do not answer.
    const std::vector<Board>& missing() const { return missing_; }
    /// Why something of the machine cannot be had: a board that is there and does not answer, or has no index file.
    /// Empty where all can.
    std::string lack() const;
    /// What is done on the line, from begin() on.
    LineWork& work() { return *work_; }

  private:
    void openPort();
    void ask(Board which);

    bool wantsHeldSent(const std::vector<PageChanges>&) override { return false; }
    bool wantsToStartAnew() override;
    void startAnew() override {}
    void tellLeft(const std::vector<PageChanges>&) override {}

    Context& context_;
    StatusBar statusBar_;
    struct LinkStops {
        ~LinkStops();
    } linkStops_;  ///< before the status bar goes
    std::array<BoardOnTheLine, Banks> boards_;
    std::string masterTrouble_;
    std::vector<Board> missing_;
    std::unique_ptr<LineWork> work_;  ///< goes before the link stops
};

/// The platform's answer to what the link has to say: asks again as long as the user allows, and then gives up by a
/// RunTimeError.
Message::Answer answerMessage(Context& context, const Message& message);

}  // namespace kestrel::ctl

// Reading and writing many parameters over the link, each until it can be believed.
// What stands on a board counts when the line was calm, or when it has been said twice in a row.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <vector>

#include "ctl/context.h"
#include "ctl/parameters.h"
#include "link/observer.h"
#include "link/param_table.h"
#include "platform/timer.h"

namespace kestrel::ctl {

class Connection;

/// What has been read; what could not be read is not among it.
using Values = std::map<Place, std::uint32_t>;

/// How a piece of work came to its end.
enum class Ending {
    Whole,
    LineLost,     ///< nothing came for as long as the user allows
    Interrupted,  ///< the port was lost or is another device: nothing more is written
    OtherBoards,  ///< they stand behind the port now
    Stopped       ///< the user has asked for the end
};

class LineWork : private LinkObserver {
  public:
    LineWork(Context& context, const Connection& connection);
    ~LineWork() override;
    LineWork(const LineWork&) = delete;
    LineWork& operator=(const LineWork&) = delete;

    /// Reads the values of all places. Of one that its board lacks or does not answer there is none.
    Ending read(const std::vector<Place>& places, Values& values);
    /// Writes in the order of the scan, and waits for each to be acknowledged, or to be read again where it was not:
    /// `confirmed` is what the boards then said. What stands on them in the end is for read() to find.
    Ending write(const std::vector<std::pair<Place, std::uint32_t>>& values, Values& confirmed);
    /// Keeps reading one place after the other until the end is wanted or the time is over; calls `seen` for each
    /// value.
    Ending follow(const std::vector<Place>& places, int seconds,
                  const std::function<void(const Place&, std::uint32_t)>& seen);

    /// Whether the board has been silent for as long as the user allows.
    bool isSilent(Board board) const;
    /// Whether the port was lost since the work began.
    bool wasInterrupted() const { return wasInterrupted_; }
    /// Shown with the progress; nothing is where it is empty.
    std::string label;
    /// Is told of the exchanges too, if it is not null.
    LinkObserver* seesAll = nullptr;
    /// So often the user has asked for the end, and was heard.
    int endsHeard = 0;

  private:
    struct Reading {
        bool isDoubtful = false;  ///< `last` came over a line that was not calm
        std::uint32_t last = 0;
        int silences = 0;
        enum Turn { First, PutOff, Last } turn = First;
    };
    enum class Answer { None, Bad, Good };

    // LinkObserver
    void frameSent(const Bytes& frame) override;
    void replyJudged(const Bytes& reply, bool good) override;
    void exchangeClosed() override;
    void recordStored(int index) override;

    void open(const std::vector<Place>& places);
    void takeStored(Values& values);
    /// Puts off those that are silent until all others have been read; those that are so again are given up, and so are
    /// all of a board that does not come back.
    void takeSilent();
    void askAgain();
    void giveUp(Board board);
    void reconsider(Values& values);
    void giveUpExchange(const Place& place) const;
    void noteSilence();
    void trouble();
    bool isCalm();
    /// Why the work must end now, or Whole.
    Ending reasonToEnd();
    void showProgress(std::size_t done, std::size_t all);

    Context& context_;
    const Connection& connection_;
    std::map<Place, Reading> open_;
    std::size_t putOff_ = 0;             ///< of the open ones
    std::array<int, Banks> silences_{};  ///< of a board, in a row
    std::vector<Place> stored_;          ///< since the last look
    std::vector<Place> silent_;          ///< whose exchanges brought nothing, since the last look
    Place asked_{Board::Master, 0};      ///< by the newest frame
    Place newest_{Board::Master, 0};     ///< whose value was taken last
    Answer answer_ = Answer::Good;       ///< to the newest frame
    bool isDisturbed_ = false;           ///< since the last value was taken
    bool anythingCame_ = false;          ///< since the last second
    bool wasInterrupted_ = false;
    std::int64_t spoiled_;
    int quietSeconds_ = 0;
    int seconds_ = 0;
    Timer second_;
    Timer doubt_;
};

}  // namespace kestrel::ctl

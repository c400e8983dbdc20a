// Reading and writing many parameters over the link, each until it can be believed.
// A reply carries no address, so a value counts when its exchange was clean and no answer to an older question could
// still come: after a silence, and after bytes that nobody asked for, nothing is asked until the line is at rest.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "ctl/context.h"
#include "ctl/parameters.h"
#include "link/observer.h"
#include "link/param_table.h"
#include "platform/timer.h"

namespace kestrel::ctl {

/// What has been read; what could not be read is not among it.
using Values = std::map<Place, std::uint32_t>;

/// How a piece of work came to its end.
enum class Ending {
    Whole,
    LineLost,     ///< no value came for as long as the user allows
    Interrupted,  ///< the port was lost or is another device: nothing more is written
    OtherBoards,  ///< they stand behind the port now
    Stopped       ///< the user has asked for the end
};

class LineWork : private LinkObserver {
  public:
    /// From now on the scan goes when the line is at rest.
    explicit LineWork(Context& context);
    ~LineWork() override;
    LineWork(const LineWork&) = delete;
    LineWork& operator=(const LineWork&) = delete;

    /// Reads the values of all places. Of one that its board lacks or does not answer there is none.
    Ending read(const std::vector<Place>& places, Values& values);
    /// Writes in the order of the scan, and waits for each to be acknowledged, or to be read again where it was not:
    /// `confirmed` is what the boards then said. What stands on them in the end is for read() to find.
    Ending write(const std::vector<std::pair<Place, std::uint32_t>>& values, Values& confirmed);
    /// Keeps reading one place after the other until the end is wanted, the time is over or nobody reads what is told;
    /// calls `seen` for each value.
    Ending follow(const std::vector<Place>& places, int seconds,
                  const std::function<void(const Place&, std::uint32_t)>& seen);

    /// Other boards are on the line: the work ends.
    void otherBoardsCame() { hasOtherBoards_ = true; }
    /// Whether the board has been silent for as long as the user allows.
    bool isSilent(Board board) const;
    /// Whether the port was lost since the work began.
    bool wasInterrupted() const { return wasInterrupted_; }
    /// Shown with the progress; nothing is where it is empty.
    std::string label;
    /// From now on nothing waits for the line's rest: for who wants to see it as it is, and believes nothing.
    void neverRests();
    /// Is told of the exchanges too, if it is not null.
    LinkObserver* seesAll = nullptr;
    /// So often the user has asked for the end, and was heard.
    int endsHeard = 0;

  private:
    struct Reading {
        int silences = 0;
        enum Turn { First, PutOff, Last } turn = First;
    };
    enum class Answer { None, Bad, Good };
    struct Stored {
        Place place;
        bool isClean;
    };

    // LinkObserver
    void exchangeOpened() override;
    void frameSent(const Bytes& frame) override;
    void replyJudged(const Bytes& reply, bool good) override;
    void exchangeClosed() override;
    void recordStored(int index) override;

    void open(const std::vector<Place>& places);
    /// Delivers an event, and sees to the line's rest. Why the work must end now, or Whole.
    Ending step();
    void takeStored(Values& values);
    /// Puts off those that are silent until all others have been read; those that are so again are given up, and so are
    /// all of a board that does not come back.
    void takeSilent();
    void askAgain();
    void giveUp(Board board);
    void giveUpExchange(const Place& place) const;
    void reconsider(Values& values);
    void noteSilence();
    void letRest(int milliseconds);
    void showProgress(std::size_t done, std::size_t all);

    Context& context_;
    std::map<Place, Reading> open_;
    std::size_t putOff_ = 0;              ///< of the open ones
    std::vector<Stored> stored_;          ///< since the last look
    std::vector<Place> silent_;           ///< whose exchanges brought nothing, since the last look
    std::array<int, Banks> silentSince_;  ///< seconds; a board that is not silent has none
    Place asked_{Board::Master, 0};       ///< by the newest frame
    Place newest_{Board::Master, 0};      ///< whose value was taken last
    Answer answer_ = Answer::Good;        ///< to the newest frame
    bool rests_ = true;
    bool isClean_ = false;       ///< the open exchange, so far
    bool isDisturbed_ = false;   ///< by bytes that nobody asked for, since the last value was taken
    bool anythingCame_ = false;  ///< a value, since the last second
    bool wasInterrupted_ = false;
    bool hasOtherBoards_ = false;
    std::int64_t spoiled_;
    int quietSeconds_ = 0;
    int seconds_ = 0;  ///< of this work
    int from_ = 0;     ///< the second in which the present piece of it began
    Timer second_;
    Timer rest_;
};

}  // namespace kestrel::ctl
